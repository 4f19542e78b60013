#include "app/screenscale.h"

#include <gtest/gtest.h>

TEST(ScreenScale, RoundsEveryFactorDownAndVeltoScaleReplacesThemAll)
{
    const struct
    {
        const char *what;
        ScaleVariables user, whole;
    } cases[] = {
        {"nothing set", {}, {}},
        {"fraction rounded down", {.scaleFactor = "2.75"}, {.scaleFactor = "2"}},
        {"never below 1", {.scaleFactor = "0.5"}, {.scaleFactor = "1"}},
        {"screen factors by name",
         {.screenScaleFactors = "DP-1=1.5;HDMI-A-1=2.25"},
         {.screenScaleFactors = "DP-1=1;HDMI-A-1=2"}},
        {"the user's rounding policy gives way to ours", {.roundingPolicy = "PassThrough"}, {}},
        {"screen scaling switched off stays off",
         {.enableHighDpiScaling = "0"},
         {.enableHighDpiScaling = "0"}},
        {"VELTO_SCALE replaces every factor",
         {"3", "1.5", "DP-1=2", "1", "Round"},
         {.veltoScale = "3", .scaleFactor = "3", .enableHighDpiScaling = "0"}},
        {"VELTO_SCALE 1 undoes a HiDPI screen",
         {.veltoScale = " 1\n", .scaleFactor = "2"},
         {.veltoScale = " 1\n", .scaleFactor = "1", .enableHighDpiScaling = "0"}},
        {"VELTO_SCALE beyond 3 is ignored",
         {.veltoScale = "4", .scaleFactor = "2.5"},
         {.veltoScale = "4", .scaleFactor = "2"}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(wholeNumberScale(c.user), c.whole) << c.what;
}

TEST(ScreenScale, GivesTheUsersVariablesBackOnceQtHasStarted)
{
    qputenv("QT_SCALE_FACTOR", "1.5");
    qputenv("QT_SCREEN_SCALE_FACTORS", "");
    qunsetenv("QT_ENABLE_HIGHDPI_SCALING");
    qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "PassThrough");
    qputenv("VELTO_SCALE", "2");
    {
        ScreenScale scale;
        EXPECT_EQ(qgetenv("QT_SCALE_FACTOR"), "2");
        EXPECT_FALSE(qEnvironmentVariableIsSet("QT_SCREEN_SCALE_FACTORS"));
        EXPECT_EQ(qgetenv("QT_ENABLE_HIGHDPI_SCALING"), "0");
        EXPECT_FALSE(qEnvironmentVariableIsSet("QT_SCALE_FACTOR_ROUNDING_POLICY"));
        scale.restore();
        EXPECT_EQ(qgetenv("QT_SCALE_FACTOR"), "1.5");
        qputenv("QT_SCALE_FACTOR", "changed later");
    }
    EXPECT_EQ(qgetenv("QT_SCALE_FACTOR"), "changed later") << "restored once only";
    EXPECT_TRUE(qEnvironmentVariableIsSet("QT_SCREEN_SCALE_FACTORS")) << "set, though empty";
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_ENABLE_HIGHDPI_SCALING"));
    EXPECT_EQ(qgetenv("QT_SCALE_FACTOR_ROUNDING_POLICY"), "PassThrough");
    EXPECT_EQ(qgetenv("VELTO_SCALE"), "2");
    for (const char *name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS",
                             "QT_SCALE_FACTOR_ROUNDING_POLICY", "VELTO_SCALE"})
        qunsetenv(name);
}
