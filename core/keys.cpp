#include "keys.h"

#include <QChar>
#include <algorithm>

QString buttonKey(const QString &name)
{
    if (name.size() == 1)
        return name.toUpper();
    for (qsizetype i = 0; i + 1 < name.size(); ++i) {
        if (name[i] != QLatin1Char('&'))
            continue;
        if (name[i + 1] != QLatin1Char('&'))
            return name.mid(i + 1, 1).toUpper();
        ++i; // "&&" is a literal ampersand
    }
    return {};
}

KeyOutcome matchKey(char32_t code, std::span<const ButtonKey> buttons, bool textFieldHasFocus)
{
    using K = KeyOutcome::Kind;
    switch (code) {
    case 27:
        return {K::Outline, 0, 0};
    case U'`':
        return {K::Outline, 1, 0};
    case U'~':
        return {K::Outline, 2, 0};
    default:
        break;
    }
    if (textFieldHasFocus)
        return {K::PassThrough, 0, 0};
    if (code == 0 || code > 0x10FFFF)
        return {};

    const char32_t upper = QChar::toUpper(code);
    const QString typed = QString::fromUcs4(&upper, 1);
    const std::size_t count = std::min<std::size_t>(buttons.size(), 120);
    for (std::size_t i = 0; i < count; ++i) {
        if (buttons[i].key == typed)
            return {K::Command, 0, buttons[i].command};
    }
    // Space plays or pauses unless the skin gave it to a button of its own.
    if (code == U' ')
        return {K::Command, 0, 36};
    return {};
}

std::optional<qint16> mediaKeyCommand(int qtKey)
{
    switch (qtKey) {
    case Qt::Key_MediaPlay:
    case Qt::Key_MediaPause:
    case Qt::Key_MediaTogglePlayPause:
        return 36;
    case Qt::Key_MediaNext:
        return 15;
    case Qt::Key_MediaPrevious:
        return 14;
    case Qt::Key_MediaStop:
        return 10;
    default:
        return std::nullopt;
    }
}
