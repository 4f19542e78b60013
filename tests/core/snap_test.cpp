#include "core/snap.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(Snap, DistanceIs240TwipsAtTheScreensDensity)
{
    const std::pair<qreal, qreal> cases[] = {{96, 16}, {192, 32}, {120, 20}, {0, 16}};
    for (const auto &[dpi, pixels] : cases)
        EXPECT_DOUBLE_EQ(snapDistance(dpi), pixels) << "dpi " << dpi;
}

TEST(Snap, EdgesCloserThanTheDistanceMoveOntoTheWorkArea)
{
    const QRect full(0, 0, 1920, 1080);
    const QRect underPanel(0, 32, 1920, 1048); // a 32 px panel at the top
    const QRect leftMonitor(-1920, 0, 1920, 1080);
    const int m = std::numeric_limits<int>::max() - 10; // right and bottom must not overflow
    const QRect far(m - 1000, m - 1000, 1000, 1000);
    const std::tuple<const char *, QRect, QRect, qreal, QPoint> cases[] = {
        {"16 px is not strictly within", {16, 16, 300, 100}, full, 96, {16, 16}},
        {"15 px is", {15, -15, 300, 100}, full, 96, {0, 0}},
        {"near bottom-right", {1605, 965, 300, 100}, full, 96, {1620, 980}},
        {"right edge past the area", {1630, 500, 300, 100}, full, 96, {1620, 500}},
        {"free in the middle", {800, 500, 300, 100}, full, 96, {800, 500}},
        {"top under a panel", {100, 40, 300, 100}, underPanel, 96, {100, 32}},
        {"negative coordinates", {-1910, 5, 300, 100}, leftMonitor, 96, {-1920, 0}},
        {"HiDPI at 32", {32, 10, 600, 200}, full, 192, {32, 0}},
        {"nearly as wide: right wins", {5, 500, 1910, 100}, full, 96, {10, 500}},
        {"near an area at the limit", {m - 305, m - 105, 300, 100}, far, 96, {m - 300, m - 100}},
    };
    for (const auto &[name, frame, area, dpi, expected] : cases)
        EXPECT_EQ(SnapWindow(frame, area, dpi), expected) << name;
}

TEST(Snap, UsesTheScreenTheWindowIsMostlyOn)
{
    const QList<SnapScreen> sideBySide = {
        {QRect(0, 0, 1920, 1050), 96},     // panel at the bottom
        {QRect(1920, 0, 2560, 1440), 192}, // HiDPI monitor to the right
    };
    const QList<SnapScreen> leftOfPrimary = {
        {QRect(-1280, -200, 1280, 1024), 96},
        {QRect(0, 0, 1920, 1080), 96},
    };
    const std::tuple<const char *, QRect, QList<SnapScreen>, QPoint> cases[] = {
        {"first screen's bottom", {500, 940, 300, 100}, sideBySide, {500, 950}},
        {"second screen's left, 32 px there", {1945, 300, 300, 100}, sideBySide, {1920, 300}},
        {"straddling, mostly on the second", {1900, 300, 300, 100}, sideBySide, {1920, 300}},
        {"negative top", {-1000, -190, 300, 100}, leftOfPrimary, {-1000, -200}},
        {"on no screen", {5000, 5000, 300, 100}, sideBySide, {5000, 5000}},
        {"no screens at all", {5, 5, 300, 100}, {}, {5, 5}},
    };
    for (const auto &[name, frame, screens, expected] : cases)
        EXPECT_EQ(SnapWindow(frame, screens), expected) << name;
}

} // namespace
