#include "skin/namescroller.h"
#include "skin/skinloader.h"

#include "skinrig.h"

#include <gtest/gtest.h>

TEST(NameScroller, FramesRunLeftAndComeRound)
{
    const std::tuple<const char *, int, int, const char *> cases[] = {
        {"Song", 8, 5, "Song"},             // fits: stands still
        {"ABCDEFGHIJ", 0, 3, "ABCDEFGHIJ"}, // no cells to fill
        {"ABCDEFGHIJ", 4, 8, "IJ *"},
        {"ABCDEFGHIJ", 4, 14, " ABC"},
        {"ABCDEFGHIJ", 4, 15, "ABCD"}, // once round the name and the gap
    };
    for (const auto &[text, cells, step, expected] : cases)
        EXPECT_EQ(NameScroller::frame(QString::fromLatin1(text), cells, step),
                  QLatin1String(expected))
            << text << " " << cells << " " << step;
}

TEST(NameScroller, ALongNameMovesWhileScrollingIsOn)
{
    SkinRig rig;
    ASSERT_TRUE(rig.loader.LoadSkin(QStringLiteral(VELTO_DATA_DIR "/skins/default.skin")));
    const QString name = QStringLiteral("A Very Long Artist Name - And An Even Longer Title");
    const auto shown = [&] { return rig.loader.display().value(NameScroller::kGroup).toString(); };

    rig.loader.SetDD(NameScroller::kGroup, name);
    EXPECT_EQ(shown(), name) << "scrolling is off";
    rig.loader.setScrollName(true);
    EXPECT_EQ(rig.loader.digitValue(NameScroller::kGroup), name) << "parts read the whole name";
    const QString first = shown();
    ASSERT_LT(first.size(), name.size()) << "the player's name group is narrower than the name";
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown() != first; }, 2000));
    EXPECT_EQ(shown(), NameScroller::frame(name, int(first.size()), 1));

    rig.loader.setScrollName(false);
    EXPECT_EQ(shown(), name);
}
