#include "keyboardinput.h"

#include "core/keys.h"
#include "skin/skinloader.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

#include <vector>

KeyboardInput::KeyboardInput(QWidget &window, const SkinLoader &skin)
    : QObject(&window), m_window(window), m_skin(skin)
{
    // The application sees a key before the focused widget does, which a
    // filter on the window alone would not.
    qApp->installEventFilter(this);
}

KeyboardInput::~KeyboardInput()
{
    qApp->removeEventFilter(this);
}

bool KeyboardInput::isTextField(const QWidget *widget)
{
    if (const auto *line = qobject_cast<const QLineEdit *>(widget))
        return !line->isReadOnly();
    if (const auto *plain = qobject_cast<const QPlainTextEdit *>(widget))
        return !plain->isReadOnly();
    if (const auto *rich = qobject_cast<const QTextEdit *>(widget))
        return !rich->isReadOnly();
    if (const auto *spin = qobject_cast<const QAbstractSpinBox *>(widget))
        return !spin->isReadOnly();
    if (const auto *combo = qobject_cast<const QComboBox *>(widget))
        return combo->isEditable();
    return false;
}

bool KeyboardInput::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType())
        return false;
    auto *receiver = static_cast<QWidget *>(watched);
    // A key a child ignored climbs to its parents; it was judged once already.
    QWidget *focus = QApplication::focusWidget();
    if (receiver->window() != &m_window || (focus && receiver != focus))
        return false;
    return press(*static_cast<QKeyEvent *>(event), *receiver);
}

bool KeyboardInput::press(const QKeyEvent &event, QWidget &receiver)
{
    // The window has no frame to close it by; desktop users expect Ctrl+Q.
    if (event.matches(QKeySequence::Quit) ||
        (event.key() == Qt::Key_Q && event.modifiers() == Qt::ControlModifier)) {
        emit quitRequested();
        return true;
    }
    if (const auto media = mediaKeyCommand(event.key())) {
        emit command(*media);
        return true;
    }
    // Some keyboards (and QTest) give Delete no text; it is DEL all the same.
    const QString text = event.key() == Qt::Key_Delete ? QStringLiteral("\x7f") : event.text();
    if (text.isEmpty() || (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier)))
        return false;
    const char32_t code = text.toUcs4().value(0);
    const bool textField = isTextField(&receiver);
    const auto modeKey = [&]() -> std::optional<qint16> {
        if (textField || !m_modeKeys)
            return std::nullopt;
        return m_modeKeys(code);
    };
    const bool control = code < 32 || code == 127;
    if (control) {
        if (const auto cmd = modeKey()) {
            if (code == 27)
                emit outlineStyle(0);
            emit command(*cmd);
            return true;
        }
    }
    // Return, Delete, Tab and the like keep their meaning in lists and dialogs.
    if (control && code != 27)
        return false;

    std::vector<ButtonKey> keys;
    for (const SkinButton &button : m_skin.skin().buttons)
        keys.push_back({buttonKey(button.name), button.command});
    const KeyOutcome outcome = matchKey(code, keys, textField);
    switch (outcome.kind) {
    case KeyOutcome::Kind::PassThrough:
        return false;
    case KeyOutcome::Kind::Command:
        emit command(outcome.command);
        return true;
    case KeyOutcome::Kind::Outline:
        emit outlineStyle(outcome.outlineStyle);
        return true;
    case KeyOutcome::Kind::Consumed:
        if (const auto cmd = modeKey())
            emit command(*cmd);
        return true;
    }
    return true;
}
