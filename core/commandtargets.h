#pragma once

#include "player/playercommands.h"
#include "radio/radiocommands.h"
#include "tools/toolcommands.h"

#include <QString>

// What DoIt asks of each part that owns commands. The methods carry the names
// the command table uses, so a reader can follow a number to its procedure.
// Numbers in the comments are the commands that reach each method.

class WindowCommands
{
public:
    virtual ~WindowCommands() = default;
    virtual void Quit() = 0;       // 1
    virtual void Minimise() = 0;   // 2
    virtual void ShowPrefs() = 0;  // 5
    virtual void SelectSkin() = 0; // 6
    // The album cover window, created the first time it is asked for.
    virtual void ShowAux16() = 0; // 16
    // Shows the playlist's quick find window, or hides it when it is showing.
    virtual void ToggleAux() = 0;     // 34
    virtual void ShowVisSelect() = 0; // 35
    virtual void ShowMenu() = 0;      // 38, at the pressed button
    // The track information window for the current entry.
    virtual void ShowTrackInfo() = 0;               // 3
    virtual void ShowQuickFind() = 0;               // 150
    virtual void LoadSkin(const QString &file) = 0; // 151, 1001-1010
    virtual QString currentSkinFile() const = 0;    // 151
    virtual void WebLink(const QString &url) = 0;   // 1011-1020 (never reached)
    // The skin is made for the clock and not for playing: command 4 splits
    // the stopwatch there rather than turning the track time round.
    virtual bool clockSkin() const = 0; // 4
};
