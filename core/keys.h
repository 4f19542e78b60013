#pragma once

#include <QString>
#include <optional>
#include <span>

// One skin button as the keyboard sees it: its key text and its command.
struct ButtonKey
{
    QString key;
    qint16 command = 0;
};

// The keyboard key of a skin button, from its name text: a name of one
// character is its own key ("7" on a calculator), otherwise the character
// after the first "&" ("&Play" is P), as in menus. Upper-cased; empty for none.
QString buttonKey(const QString &name);

// What a typed character does in the main window.
struct KeyOutcome
{
    enum class Kind {
        PassThrough, // the text field that has the focus takes it
        Consumed,    // swallowed, nothing happens
        Outline,     // show the button and label areas in outlineStyle
        Command,     // run command through DoIt
    };
    Kind kind = Kind::Consumed;
    int outlineStyle = 0; // 0 hides the areas, 1 and 2 are the two visible styles
    qint16 command = 0;

    bool operator==(const KeyOutcome &) const = default;
};

// Form_KeyPress. code is the typed character; buttons[0] is button 1, and only
// buttons 1 to 120 are looked at. The outline keys work even while a text
// field has the focus, so an author can check a skin whatever mode it shows.
KeyOutcome matchKey(char32_t code, std::span<const ButtonKey> buttons, bool textFieldHasFocus);

// The command of a multimedia key (a Qt::Key value), if it has one.
std::optional<qint16> mediaKeyCommand(int qtKey);
