#pragma once

#include <QString>
#include <vector>

// One entry of the popup menu (tray icon and command 38). The window builds
// its QMenu from this tree; "&" marks the mnemonic letter.
struct MenuEntry
{
    enum class Action {
        Command,       // DoIt(value)
        Submenu,       // opens children, runs nothing
        FavouriteSkin, // SelFSkin(value), value is the slot 0..9
        AlwaysOnTop,   // flips WinOnTop, shown checked while it is on
    };

    QString caption;
    Action action = Action::Command;
    int value = 0;
    std::vector<MenuEntry> children;
};

QString popupMenuTitle();
std::vector<MenuEntry> popupMenu();

// "&Always On Top" writes 1 minus the stored value, so a stray -1 becomes 2
// and 2 becomes -1. A value whose flip does not fit stays as it is.
qint16 toggledOnTop(qint16 WinOnTop);
// Only exactly 1 means on top.
bool isOnTop(qint16 WinOnTop);
