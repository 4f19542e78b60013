#pragma once

#include <QChar>
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
    // Shows the skin browser, or hides it when it is showing.
    virtual void ToggleAux() = 0;     // 34
    virtual void ShowVisSelect() = 0; // 35
    virtual void ShowMenu() = 0;      // 38, at the pressed button
    // The track information window for the current entry.
    virtual void ShowTrackInfo() = 0;               // 3
    virtual void ShowQuickFind() = 0;               // 150
    virtual void LoadSkin(const QString &file) = 0; // 151, 1001-1010
    virtual QString currentSkinFile() const = 0;    // 151
    virtual void WebLink(const QString &url) = 0;   // 1011-1020 (never reached)
};

class PlayerCommands
{
public:
    virtual ~PlayerCommands() = default;
    virtual void StopIt() = 0;                  // 10
    virtual void PauseIt() = 0;                 // 11
    virtual void PlayIt() = 0;                  // 12
    virtual void EjectIt() = 0;                 // 13
    virtual void PrevTrack() = 0;               // 14
    virtual void NextTrack() = 0;               // 15
    virtual void Reverse() = 0;                 // 32
    virtual void Forward() = 0;                 // 33
    virtual void PlayPause() = 0;               // 36
    virtual void ToggleCDMode() = 0;            // 37
    virtual void JumpTo() = 0;                  // 39
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

class CalculatorCommands
{
public:
    virtual ~CalculatorCommands() = default;
    virtual void AddDigit(QChar digit) = 0;  // 40-50
    virtual void CalcKey(int key) = 0;       // 51-68
    virtual void SelectConversionFile() = 0; // 69
};

class StopwatchCommands
{
public:
    virtual ~StopwatchCommands() = default;
    virtual void TimerFn(int function) = 0; // 70-75 as 1-6
};

class NotepadCommands
{
public:
    virtual ~NotepadCommands() = default;
    virtual void NoteLoad() = 0;  // 76
    virtual void NoteSave() = 0;  // 77
    virtual void NoteClear() = 0; // 78
    virtual void NotePrint() = 0; // 79
};

class FmCommands
{
public:
    virtual ~FmCommands() = default;
    virtual void FMSetScan(int direction) = 0; // 80 (-1), 81 (+1)
    virtual void FMTuneDown() = 0;             // 82
    virtual void FMTuneUp() = 0;               // 83
    virtual void FMPrevPreset() = 0;           // 84
    virtual void FMNextPreset() = 0;           // 85
    virtual void FMShowFreq() = 0;             // 86
    // Mutes the card, or gives it its sound back.
    virtual void FMAct87() = 0;             // 87
    virtual void FMStep(int direction) = 0; // 88 (+1), 89 (-1)
    virtual void FMEnterFreq() = 0;         // 90
    virtual void FMPresetKey(int key) = 0;  // 91-100 as 0-9
};

class WebCommands
{
public:
    virtual ~WebCommands() = default;
    // 0 Home, 1 Refresh, 2 Back, 3 Forward, 4 Stop.
    virtual void WebNav(int action) = 0;   // 101-105
    virtual void WebSearch() = 0;          // 106
    virtual void QuickLink(int index) = 0; // 110-119 as 0-9
};

class WebRadioCommands
{
public:
    virtual ~WebRadioCommands() = default;
    virtual void WRQuickURL(int index) = 0; // 130-139 as 0-9
    virtual void WRDoPreset(int index) = 0; // 140, 141
    virtual void WRAddStation() = 0;        // 142
    virtual void WRDelStation() = 0;        // 143
    virtual void WRStep(int direction) = 0; // 144 (+1), 145 (-1)
    // Opens the selected station for editing in the text field (WRSetEdit).
    virtual void WRAct146() = 0; // 146
    virtual void WRPlay() = 0;   // 147
    virtual void WRStop() = 0;   // 148
};

class ToolCommands
{
public:
    virtual ~ToolCommands() = default;
    virtual void ShowMixer() = 0; // 29
};
