#include "skin/lights.h"

#include "support/printers.h"

#include <QImage>
#include <functional>
#include <gtest/gtest.h>

TEST(ShowLights, EachSwitchLightsItsOwnLamp)
{
    const struct
    {
        const char *what;
        std::function<void(PlayerSwitches &)> set;
        std::vector<int> lit;
        const char *label26;
    } cases[] = {
        {"nothing", [](PlayerSwitches &) {}, {4, 22}, "Media"},
        {"playing", [](PlayerSwitches &s) { s.playing = true; }, {2, 22}, "Media"},
        {"paused", [](PlayerSwitches &s) { s.playing = s.paused = true; }, {3, 22}, "Media"},
        {"intro scan", [](PlayerSwitches &s) { s.introScan = true; }, {4, 5, 22}, "Media"},
        {"stop after item", [](PlayerSwitches &s) { s.stopAfterItem = true; }, {4, 6, 22}, "Media"},
        {"repeat", [](PlayerSwitches &s) { s.repeatItem = true; }, {4, 7, 22}, "Media"},
        {"shuffle", [](PlayerSwitches &s) { s.shuffle = true; }, {4, 8, 22}, "Media"},
        {"continuous", [](PlayerSwitches &s) { s.continuousPlay = true; }, {4, 9, 22}, "Media"},
        {"muted", [](PlayerSwitches &s) { s.muted = true; }, {4, 10, 22}, "Media"},
        {"schedule", [](PlayerSwitches &s) { s.scheduleAuto = true; }, {4, 11, 22}, "Media"},
        {"snooze", [](PlayerSwitches &s) { s.snooze = true; }, {4, 12, 22}, "Media"},
        {"a-b loop", [](PlayerSwitches &s) { s.abLoop = true; }, {4, 13, 22}, "Media"},
        {"lyrics", [](PlayerSwitches &s) { s.lyrics = true; }, {4, 14, 22}, "Media"},
        {"cd mode", [](PlayerSwitches &s) { s.mediaMode = false; }, {4, 15}, "CD"},
        {"stereo", [](PlayerSwitches &s) { s.fmStereo = true; }, {4, 16, 22}, "Media"},
        {"signal", [](PlayerSwitches &s) { s.fmSignal = true; }, {4, 17, 22}, "Media"},
        {"led sign", [](PlayerSwitches &s) { s.ledSign = true; }, {4, 18, 22}, "Media"},
        {"on top", [](PlayerSwitches &s) { s.onTop = true; }, {4, 19, 22}, "Media"},
        {"24-hour", [](PlayerSwitches &s) { s.twentyFourHour = true; }, {4, 20, 22}, "Media"},
        {"stopwatch", [](PlayerSwitches &s) { s.stopwatchRunning = true; }, {4, 21, 22}, "Media"},
    };
    for (const auto &c : cases) {
        PlayerSwitches s;
        c.set(s);
        const LightsView v = ShowLights(s);
        std::vector<int> lit;
        for (int i = 0; i <= LightsView::Count; ++i)
            if (v.visible[size_t(i)])
                lit.push_back(i);
        EXPECT_EQ(lit, c.lit) << c.what;
        EXPECT_EQ(v.label26, QString::fromLatin1(c.label26)) << c.what;
    }
}

TEST(DrawLight, FillsItsShapeInsideTheRectangleOnly)
{
    // A 20x12 light at (5, 5): right edge x 24, bottom y 16, middle row 11.
    const QRect rect(5, 5, 20, 12);
    const QPoint centre(15, 11), topLeft(5, 5), topRight(24, 5), nearTopLeft(6, 6),
        nearTopRight(23, 6), leftMiddle(7, 11), rightMiddle(22, 11), topMiddle(15, 5);
    const struct
    {
        int shape;
        std::vector<QPoint> filled, empty;
    } cases[] = {
        {0, {centre, topLeft, topRight}, {}},
        {9, {centre, topLeft, topRight}, {}},
        {1, {centre, leftMiddle, rightMiddle, topMiddle}, {topLeft, topRight}},
        {2, {centre, topMiddle, nearTopLeft, nearTopRight}, {topLeft, topRight}},
        {3, {centre, nearTopLeft, QPoint(20, 11)}, {topRight, nearTopRight}},
        {4, {centre, nearTopRight, QPoint(9, 11)}, {topLeft, nearTopLeft}},
    };
    for (const auto &c : cases) {
        QImage img(40, 30, QImage::Format_ARGB32_Premultiplied);
        img.fill(Qt::transparent);
        drawLight(img, rect, lightColour(300, -5, 128), c.shape);
        for (const QPoint &p : c.filled) {
            const QRgb px = img.pixel(p);
            EXPECT_GT(qAlpha(px), 200) << "shape " << c.shape << " at " << p.x() << "," << p.y();
            EXPECT_GT(qRed(px), 240);
            EXPECT_LT(qGreen(px), 10);
        }
        for (const QPoint &p : c.empty)
            EXPECT_LT(qAlpha(img.pixel(p)), 60)
                << "shape " << c.shape << " at " << p.x() << "," << p.y();
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                if (!rect.contains(x, y)) {
                    ASSERT_EQ(qAlpha(img.pixel(x, y)), 0) << "shape " << c.shape << " spilled";
                }
    }

    QImage indexed(10, 10, QImage::Format_Indexed8);
    drawLight(indexed, QRect(1, 1, 5, 5), Qt::red, 0); // nothing to paint on; no crash
    QImage none;
    drawLight(none, QRect(1, 1, 5, 5), Qt::red, 1);
}
