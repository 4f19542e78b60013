#include "support/shippedwindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// The shipped player on the X server, read back from the screen: the window
// is shaped there, and a light is only lit when its pixels say so.
class LitOnScreen : public ::testing::Test, protected ShippedWindow
{
protected:
    void SetUp() override
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            GTEST_SKIP() << "needs an X server (scripts/test starts Xvfb)";
        start();
        window->move(40, 40);
        showFirstFrame();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }

    // The centre of light n on the screen has the light's own colour.
    bool lit(int n, QColor colour) const
    {
        const QRect light = lightRect(n).translated(window->geometry().topLeft());
        const QImage shot = QGuiApplication::primaryScreen()
                                ->grabWindow(0, light.x(), light.y(), light.width(), light.height())
                                .toImage();
        return !shot.isNull() && shot.pixelColor(light.width() / 2, light.height() / 2) == colour;
    }

    QRect lightRect(int n) const
    {
        for (const SkinLight &light : window->skin().skin().lights)
            if (light.number == n)
                return light.rect;
        return {};
    }
};

} // namespace

TEST_F(LitOnScreen, MuteAndARunningStopwatchLightTheirLights)
{
    const QColor amber(255, 180, 64), green(124, 232, 138);
    ASSERT_FALSE(lightRect(10).isEmpty()) << "the player skin has a mute light";
    EXPECT_FALSE(lit(10, amber));
    velto->DoIt(9);
    EXPECT_TRUE(QTest::qWaitFor([&] { return lit(10, amber); }, 5000)) << "command 9 mutes";
    velto->DoIt(9);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !lit(10, amber); }, 5000));

    velto->DoIt(1005); // the clock
    ASSERT_FALSE(lightRect(21).isEmpty()) << "the clock skin has a stopwatch light";
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !lit(21, green); }, 5000));
    velto->DoIt(72); // start
    EXPECT_TRUE(QTest::qWaitFor([&] { return lit(21, green); }, 5000)) << "a stopwatch runs";
    velto->DoIt(70); // another stopwatch is current; the first still runs
    velto->DoIt(75); // reset all stops them
    EXPECT_TRUE(QTest::qWaitFor([&] { return !lit(21, green); }, 5000));
}
