#pragma once

class QWidget;

// Keeps the window above all others, or puts it back among normal windows,
// without moving, resizing or hiding it. Other window flags (the frameless
// one of the shaped main window) stay as they are.
void SetOnTop(QWidget &window, bool onTop);

// Shows the window in front, from the tray or minimised too: a second start
// of the program, the desktop's media controls, the tray icon or an alarm asked
// for it.
void bringForward(QWidget &window);
