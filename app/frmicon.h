#pragma once

#include <QIcon>
#include <QString>
#include <QSystemTrayIcon>

class PopupMenu;
class QWidget;

// The notification-area icon: a click brings the main window back, the
// context menu is the popup menu. Without a notification area there is no
// icon and the menu stays reachable from the main window (command 38).
class frmIcon
{
public:
    frmIcon(QWidget &mainWindow, PopupMenu &menu);
    // Takes the icon out of the notification area.
    ~frmIcon();
    frmIcon(const frmIcon &) = delete;
    frmIcon &operator=(const frmIcon &) = delete;

    // Whether the desktop has a notification area right now.
    static bool available();
    // The icon appears once a notification area is there, even a later one.
    void show();
    void hide();
    // In a notification area, where the user can reach it.
    bool isShown() const;

    // Keeps the first 64 characters, as much as every tray shows.
    void setToolTip(const QString &text);
    QString toolTip() const { return m_icon.toolTip(); }

    // closeHidesToTray with this icon.
    bool hidesOnClose(qint16 ExitMode) const;

    // Restores the main window when it is minimised or hidden, then brings it
    // to the front.
    void RestoreWindow();

    QSystemTrayIcon &icon() { return m_icon; }

private:
    void activated(QSystemTrayIcon::ActivationReason reason);

    QWidget &m_window;
    QSystemTrayIcon m_icon;
};

// Velto's mark, drawn here at the sizes trays ask for.
QIcon trayIconImage();

// ExitMode 0 quits on a close request; 1 only hides the main window, while
// an icon is there to bring it back. Quit (command 1) always quits.
bool closeHidesToTray(qint16 ExitMode, bool iconShown);
