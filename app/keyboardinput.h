#pragma once

#include <QObject>

#include <functional>
#include <optional>

class QKeyEvent;
class QWidget;
class SkinLoader;

// Keys typed anywhere in the main window reach the skin's buttons, whichever
// child holds the focus: a list or slider that took the focus when the window
// was activated must not swallow them. Only real text fields keep what is
// typed into them.
class KeyboardInput : public QObject
{
    Q_OBJECT
public:
    KeyboardInput(QWidget &window, const SkinLoader &skin);
    ~KeyboardInput() override;

    // A widget that takes typed text: line edits, text areas, spin boxes and
    // editable combo boxes that are not read-only.
    static bool isTextField(const QWidget *widget);

    // The command the mode shown gives a typed character that no skin
    // button claims, Return and Backspace included.
    using ModeKeys = std::function<std::optional<qint16>(char32_t typed)>;
    void setModeKeys(ModeKeys keys) { m_modeKeys = std::move(keys); }

signals:
    void command(qint16 cmd);
    // The outline keys; Escape (style 0) also ends a folder scan.
    void outlineStyle(int style);
    void quitRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // True when the key was used and must not reach the focused widget.
    bool press(const QKeyEvent &event, QWidget &receiver);

    QWidget &m_window;
    const SkinLoader &m_skin;
    ModeKeys m_modeKeys;
};
