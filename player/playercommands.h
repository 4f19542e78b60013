#pragma once

#include <QChar>
#include <QString>

// What the command table asks of the player and its playlist.
// The numbers in the comments are the commands that reach each method.

// Player options the toggle commands flip; the playback tick reads them.
struct PlayerFlags
{
    bool IntroScan = false;
    bool StopAfterItem = false;
    bool RepeatItem = false;
    bool Shuffle = false;
};

class PlayerCommands
{
public:
    virtual ~PlayerCommands() = default;
    virtual void StopIt() = 0;       // 10
    virtual void PauseIt() = 0;      // 11
    virtual void PlayIt() = 0;       // 12
    virtual void EjectIt() = 0;      // 13
    virtual void PrevTrack() = 0;    // 14
    virtual void NextTrack() = 0;    // 15
    virtual void Reverse() = 0;      // 32
    virtual void Forward() = 0;      // 33
    virtual void PlayPause() = 0;    // 36
    virtual void ToggleCDMode() = 0; // 37
    // Offers the position command 31 marked (when there is one) as the answer.
    virtual void JumpTo(qint32 markPos) = 0;    // 39
    virtual void ShowLights() = 0;              // after 25-28
    virtual qint32 currentPosition() const = 0; // 31
    // Switches the time display between elapsed and remaining (ShowRemaining).
    virtual void ToggleRemaining() = 0; // 4
    // One step of the output volume: +1 louder (7), -1 softer (8).
    virtual void VolumeStep(int direction) = 0;
    virtual void ToggleMute() = 0; // 9
    // Plays the playlist entry at the list's 0-based selected index.
    virtual void PlSelAct(int selectedIndex) = 0; // 17
    // A-B loop: sets the start, then the end, then clears both.
    virtual void LoopPoint() = 0; // 30
};

class PlaylistCommands
{
public:
    virtual ~PlaylistCommands() = default;
    virtual void PlMoveEntry(int direction) = 0; // 18 (+1), 19 (-1)
    virtual void PlClear() = 0;                  // 20
    virtual void PlLoad() = 0;                   // 21
    virtual void PlSaveAs() = 0;                 // 22
    virtual void OpenMedia() = 0;                // 23, adds what was opened (AddOpened)
    virtual void AddFromDir() = 0;               // 24
    // -1 when nothing is selected.
    virtual int selectedIndex() const = 0; // 17
};
