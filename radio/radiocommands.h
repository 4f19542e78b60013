#pragma once

#include <QChar>
#include <QString>

// What the command table asks of the tuner, the browser and web radio.
// The numbers in the comments are the commands that reach each method.

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
