#include "windowflags.h"

#include <QWidget>
#include <QWindow>

void SetOnTop(QWidget &window, bool onTop)
{
    Qt::WindowFlags flags = window.windowFlags();
    if (flags.testFlag(Qt::WindowStaysOnTopHint) == onTop)
        return;
    flags.setFlag(Qt::WindowStaysOnTopHint, onTop);
    // QWidget::setWindowFlags would unmap the window and map it again: the
    // shaped window blinks and a window manager may place it anew. Telling
    // the native window directly changes only its stacking state.
    window.overrideWindowFlags(flags);
    if (QWindow *handle = window.windowHandle())
        handle->setFlags(flags);
}

void bringForward(QWidget &window)
{
    window.show();
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.raise();
    window.activateWindow();
}
