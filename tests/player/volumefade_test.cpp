#include "player/volumefade.h"

#include "support/fakes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

class VolumeFadeTest : public ::testing::Test
{
protected:
    FakeClock clock;
    std::vector<int> levels;
    VolumeFade fade{clock};

    VolumeFadeTest()
    {
        fade.setLevel = [this](int level) { levels.push_back(level); };
    }

    // Ticks every 250 ms, as the clock timer does, for the given time.
    void runMs(int ms)
    {
        for (int t = 0; t < ms; t += 250) {
            clock.time = clock.time.addMSecs(250);
            fade.tick();
        }
    }
};

TEST_F(VolumeFadeTest, RisesFromSilenceToTheTargetWithoutGoingBack)
{
    fade.start(65535, 8000);
    ASSERT_EQ(levels, std::vector<int>{0}) << "silent before the first sound";
    runMs(4000);
    ASSERT_TRUE(fade.running());
    // Half the time gives a quarter of the gain: the ear hears about half.
    EXPECT_EQ(levels.back(), 16384);
    runMs(4000);
    EXPECT_FALSE(fade.running());
    EXPECT_EQ(levels.back(), 65535);
    EXPECT_TRUE(std::is_sorted(levels.begin(), levels.end()));
    EXPECT_GE(levels.size(), 30u) << "about four steps a second";

    const size_t before = levels.size();
    runMs(2000);
    EXPECT_EQ(levels.size(), before) << "a finished fade leaves the volume to the user";
}

TEST_F(VolumeFadeTest, EndsAtTheTargetWhateverTheClockDoes)
{
    const struct
    {
        const char *what;
        int target;
        int durationMs;
        std::function<void(FakeClock &)> step; // before the first tick
        int finalLevel;
        size_t calls; // setter calls in all
    } cases[] = {
        {"no fade time", 300, 0, [](FakeClock &) {}, 300, 1},
        {"negative target", -40, 8000, [](FakeClock &c) { c.time = c.time.addSecs(9); }, 0, 1},
        {"clock set back", 300, 8000, [](FakeClock &c) { c.time = c.time.addSecs(-3600); }, 300, 2},
        {"clock fails", 300, 8000, [](FakeClock &c) { c.time = QDateTime(); }, 300, 2},
    };
    for (const auto &c : cases) {
        levels.clear();
        clock.time = QDateTime(QDate(2026, 11, 23), QTime(7, 30));
        fade.start(c.target, c.durationMs);
        c.step(clock);
        fade.tick();
        fade.tick();
        EXPECT_FALSE(fade.running()) << c.what;
        ASSERT_FALSE(levels.empty()) << c.what;
        EXPECT_EQ(levels.back(), c.finalLevel) << c.what;
        EXPECT_EQ(levels.size(), c.calls) << c.what;
    }
}

TEST_F(VolumeFadeTest, FinishJumpsToTheTargetCancelLeavesTheLevelAndStartBeginsAgain)
{
    fade.start(1000, 8000);
    runMs(1000);
    fade.finish();
    EXPECT_EQ(levels.back(), 1000);
    EXPECT_FALSE(fade.running());

    levels.clear();
    fade.start(1000, 8000);
    runMs(2000);
    const int reached = levels.back();
    EXPECT_GT(reached, 0);
    EXPECT_LT(reached, 1000);
    fade.cancel();
    runMs(8000);
    fade.finish();
    EXPECT_EQ(levels.back(), reached) << "the user's own volume stays";

    levels.clear();
    fade.start(1000, 8000);
    EXPECT_EQ(levels, std::vector<int>{0}) << "a new start begins again from silence";
    EXPECT_TRUE(fade.running());
}

TEST_F(VolumeFadeTest, FadeInReachesTheLevelInUseEvenWhenSwitchedOnTwice)
{
    fade.fadeIn();
    EXPECT_TRUE(levels.empty()) << "no reader, no level to reach: the volume is left alone";
    EXPECT_FALSE(fade.running());

    int inUse = 40000;
    fade.readLevel = [&inUse] { return inUse; };
    fade.fadeIn(8000);
    runMs(2000);
    inUse = levels.back(); // the control now reports the faded level
    fade.fadeIn(8000);     // a second entry switches on in the same minute
    runMs(8000);
    EXPECT_EQ(levels.back(), 40000);
}

} // namespace
