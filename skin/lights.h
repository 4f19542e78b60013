#pragma once

#include <QColor>
#include <QRect>
#include <QString>
#include <array>

class QPainter;

// The player's switches that the skin's indicator lights show.
struct PlayerSwitches
{
    bool playing = false;
    bool paused = false;
    bool introScan = false;
    bool stopAfterItem = false;
    bool repeatItem = false;
    bool shuffle = false;
    bool continuousPlay = false; // the "ContPB" setting
    bool muted = false;
    bool mediaMode = true;     // media files; false for audio CD
    bool scheduleAuto = false; // the "Auto" setting
    bool snooze = false;
    bool abLoop = false;
    bool lyrics = false; // a lyrics file is loaded for the current item
    bool fmStereo = false;
    bool fmSignal = false;
    bool ledSign = false;        // the "ExEnable" setting
    bool onTop = false;          // the "WinOnTop" setting
    bool twentyFourHour = false; // "TimeFmt" not 0
    bool stopwatchRunning = false;
};

// Visibility of lights 1 to 22 (index 0 unused) and the text of label 26.
struct LightsView
{
    static constexpr int Count = 22;
    std::array<bool, Count + 1> visible{};
    QString label26;
};

LightsView ShowLights(const PlayerSwitches &s);

// A light as a filled, antialiased shape: 0 rectangle, 1 ellipse, 2 rounded
// rectangle, 3 triangle pointing right, 4 triangle pointing left; any other
// kind draws a rectangle.
void drawLight(QPainter &painter, const QRect &rect, const QColor &colour, int shape);
