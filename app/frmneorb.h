#pragma once

#include "app/keyboardinput.h"
#include "skin/skinloader.h"

#include <QPoint>
#include <QWidget>

class Clock;
class Dialogs;
struct Settings;

// The main window: it hosts the skin and turns what the user does on it
// (buttons, keys, the mouse wheel, drags, drops and the right button) into
// commands and signals. The parts draw on its skin; no rule of a mode
// lives here.
class frmNeOrb : public QWidget
{
    Q_OBJECT
public:
    // NoRMB and WinSnap are read at each click and drag.
    frmNeOrb(const Settings &settings, Dialogs &dialogs, const Clock &clock,
             QWidget *parent = nullptr);
    ~frmNeOrb() override;

    SkinLoader &skin() { return m_skin; }
    const SkinLoader &skin() const { return m_skin; }
    KeyboardInput &keys() { return m_keys; }

signals:
    // A skin button released, a key: what to run.
    void command(qint16 cmd);
    // The right button, unless "NoRMB" is set.
    void menuRequested();
    void wheelTurned(int angleDelta);
    // Local files and folders dropped on the window, in their order.
    void filesDropped(const QStringList &paths);
    // Escape: a folder scan ends with it.
    void escapePressed();
    void firstFramePainted();
    // The user moved the mouse onto the window: a click may follow. A window
    // that merely appears under a resting pointer does not count.
    void pointerEntered();

protected:
    void paintEvent(QPaintEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void paintPlaceholder(QPainter &p);
    void snapToScreenEdges();

    const Settings &m_settings;
    SkinLoader m_skin;
    KeyboardInput m_keys{*this, m_skin};
    QPoint m_dragOffset; // mouse position within the window while dragging
    QPoint m_pointerAtShow;
    bool m_dragging = false;
    bool m_painted = false;
};
