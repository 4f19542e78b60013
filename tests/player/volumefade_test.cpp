#include "player/volumefade.h"

#include "support/fakes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace {

struct FadeRig
{
    FakeClock clock;
    std::vector<int> levels;
    VolumeFade fade{clock};

    FadeRig()
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

// The clock is moved by jumpMs (or fails) before it ticks for runMs; then the
// user may step in.
TEST(VolumeFade, EndsAtItsTargetWhateverTheClockOrTheUserDoes)
{
    enum Then { Nothing, Finish, CancelAndWait, StartAgain };
    const struct
    {
        const char *what;
        int target, durationMs;
        std::optional<qint64> jumpMs;
        int runMs;
        Then then;
        int level;
        bool running;
    } cases[] = {
        // Half the time gives a quarter of the gain: the ear hears about half.
        {"halfway", 65535, 8000, 0, 4000, Nothing, 16384, true},
        {"to the end", 65535, 8000, 0, 8000, Nothing, 65535, false},
        {"no fade time", 300, 0, 0, 0, Nothing, 300, false},
        {"negative target", -40, 8000, 0, 9000, Nothing, 0, false},
        {"clock set back", 300, 8000, -3600000, 250, Nothing, 300, false},
        {"clock fails", 300, 8000, std::nullopt, 250, Nothing, 300, false},
        {"finish jumps to the target", 1000, 8000, 0, 1000, Finish, 1000, false},
        {"cancel leaves the level reached", 1000, 8000, 0, 2000, CancelAndWait, 63, false},
        {"a new start begins again from silence", 1000, 8000, 0, 2000, StartAgain, 0, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        FadeRig r;
        r.fade.start(c.target, c.durationMs);
        ASSERT_FALSE(r.levels.empty());
        if (c.durationMs) {
            EXPECT_EQ(r.levels.front(), 0) << "silent before the first sound";
        }
        r.clock.time = c.jumpMs ? r.clock.time.addMSecs(*c.jumpMs) : QDateTime();
        r.runMs(c.runMs);
        if (c.then == Finish)
            r.fade.finish();
        if (c.then == CancelAndWait) {
            r.fade.cancel();
            r.runMs(8000);
            r.fade.finish();
        }
        if (c.then == StartAgain)
            r.fade.start(c.target, c.durationMs);
        else
            EXPECT_TRUE(std::is_sorted(r.levels.begin(), r.levels.end()));
        // A finished fade leaves the volume to the user.
        const size_t set = r.levels.size();
        if (!c.running)
            r.runMs(2000);
        EXPECT_EQ(r.levels.size(), set);
        EXPECT_EQ(r.levels.back(), c.level);
        EXPECT_EQ(r.fade.running(), c.running);
    }
}

TEST(VolumeFade, FadeInReachesTheLevelInUseEvenWhenSwitchedOnTwice)
{
    FadeRig r;
    int inUse = 40000;
    r.fade.readLevel = [&inUse] { return inUse; };
    r.fade.fadeIn(8000);
    r.runMs(2000);
    inUse = r.levels.back(); // the control now reports the faded level
    r.fade.fadeIn(8000);     // a second entry switches on in the same minute
    r.runMs(8000);
    EXPECT_EQ(r.levels.back(), 40000);
}

} // namespace
