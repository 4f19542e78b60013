#pragma once

#include <QByteArray>

#include <array>

// Skins are pixel art, so on a HiDPI screen every skin pixel must become a
// whole block of screen pixels. Qt's own high-DPI scaling does it: the window,
// its shape, its elements and every menu and dialog are sized in skin pixels,
// Qt multiplies them all by the screen's factor, and as the skin's drawing
// never smooths, a whole factor keeps each skin pixel one colour and the shape
// exact. The skin loader's own scale stays 1, so nothing is scaled twice.
// (Scaling in the loader instead would need Qt's scaling off for the whole
// program, leaving menus and dialogs tiny on the very screens that need them
// larger.)
//
// So Qt must be given whole factors: the one it derives from the screen's DPI
// is rounded down by the policy main() sets, and those a user or desktop gives
// in QT_SCALE_FACTOR and QT_SCREEN_SCALE_FACTORS (a desktop may write 1.5 there
// for a 150 % screen) are rounded down here, never below 1. VELTO_SCALE=1, 2
// or 3 replaces all of them, on every screen.

// Qt's scaling variables, as the environment holds them; empty is unset.
struct ScaleVariables
{
    QByteArray veltoScale = {};           // VELTO_SCALE
    QByteArray scaleFactor = {};          // QT_SCALE_FACTOR
    QByteArray screenScaleFactors = {};   // QT_SCREEN_SCALE_FACTORS
    QByteArray enableHighDpiScaling = {}; // QT_ENABLE_HIGHDPI_SCALING
    QByteArray roundingPolicy = {};       // QT_SCALE_FACTOR_ROUNDING_POLICY

    bool operator==(const ScaleVariables &) const = default;
};

// The variables that give the user's screen factors rounded down to whole ones.
ScaleVariables wholeNumberScale(const ScaleVariables &user);

// Sets the variables of wholeNumberScale() until restore(); build the
// QApplication in between. Qt reads them only while it starts, and the user's
// own come back afterwards, so the programs Velto starts see them unchanged.
class ScreenScale
{
public:
    ScreenScale();
    ~ScreenScale();
    ScreenScale(const ScreenScale &) = delete;
    ScreenScale &operator=(const ScreenScale &) = delete;

    void restore();

private:
    static constexpr int Count = 4; // the Qt variables; VELTO_SCALE is only read
    std::array<QByteArray, Count> m_user;
    std::array<bool, Count> m_userSet{};
    bool m_restored = false;
};
