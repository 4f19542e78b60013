#include "tools/stopwatches.h"

#include "support/printers.h"
#include "support/recordingsurface.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

// Running, hours, minutes, tenths.
QString counters(const Stopwatches &sw, int t)
{
    return QString::asprintf("%d %d %d %d", sw.field(t, 0), sw.field(t, 2), sw.field(t, 3),
                             sw.field(t, 4));
}

class StopwatchesTest : public ::testing::Test
{
protected:
    RecordingSurface skin;
    Stopwatches sw{skin};
    QString shown() const { return skin.groups.value(Stopwatches::kGroup).toString(); }
};

TEST_F(StopwatchesTest, SelectionWrapsBothWaysAndShowsOnLabel28)
{
    const std::pair<int, int> steps[] = {{2, 9}, {1, 0}, {1, 1}, {2, 0}};
    for (const auto &[op, current] : steps) {
        sw.TimerFn(op);
        EXPECT_EQ(sw.current(), current);
        EXPECT_EQ(skin.labels.value(28), QString::number(current));
    }
}

TEST_F(StopwatchesTest, RunningTimersCountHoursMinutesAndTenths)
{
    const struct
    {
        std::vector<qint64> steps;
        const char *text;
        const char *fields;
    } cases[] = {
        {{99, 1}, "0:00:00.1", "1 0 0 1"},
        {{3'599'900, 100}, "1:00:00.0", "1 1 0 0"},
        {{45'296'700}, "12:34:56.7", "1 12 34 567"},
        {{std::numeric_limits<qint64>::max(), 1000}, "32767:59:59.9", "1 32767 59 599"},
    };
    for (const auto &c : cases) {
        sw.TimerFn(6);
        sw.TimerFn(3);
        for (qint64 ms : c.steps)
            sw.advance(ms);
        EXPECT_EQ(shown(), QString::fromLatin1(c.text));
        EXPECT_EQ(sw.text(0), QString::fromLatin1(c.text));
        EXPECT_EQ(counters(sw, 0), QString::fromLatin1(c.fields)) << c.text;
    }
}

// A script of function codes and "+ms" steps of time; then the selection, some
// timers' counters and the display. Only running timers advance; lap stops the
// current timer and starts the next from zero; reset keeps the current one
// running, reset all stops every one; split holds the display.
TEST(Stopwatches, ScriptsOfFunctionsLeaveTheirCounters)
{
    const struct
    {
        const char *script;
        int current;
        std::vector<std::pair<int, const char *>> counters;
        const char *shown;
    } cases[] = {
        {"3 1 1 3 1 +2000", 3, {{0, "1 0 0 20"}, {1, "0 0 0 0"}, {2, "1 0 0 20"}}, "0:00:00.0"},
        {"3 1 1 3 1 +2000 2 3 +1000", 2, {{0, "1 0 0 30"}, {2, "0 0 0 20"}}, "0:00:02.0"},
        {"3 1 3 +1000 8 9 -1 70 32767", 1, {{0, "1 0 0 10"}, {1, "1 0 0 10"}}, "0:00:01.0"},
        {"3 2 3 +1500 1 3 2 5 +300", 0, {{9, "0 0 0 15"}, {0, "1 0 0 3"}}, "0:00:00.3"},
        {"3 1 3 1 3 +4200 4", 2, {{1, "1 0 0 42"}, {2, "1 0 0 0"}}, "0:00:00.0"},
        {"3 1 3 1 3 +4200 6 +1000",
         2,
         {{0, "0 0 0 0"}, {1, "0 0 0 0"}, {2, "0 0 0 0"}},
         "0:00:00.0"},
        {"3 +1200 7 +3000", 0, {{0, "1 0 0 42"}}, "0:00:01.2"},
        {"3 +1200 7 +3000 7", 0, {{0, "1 0 0 42"}}, "0:00:04.2"},
    };
    for (const auto &c : cases) {
        RecordingSurface skin;
        Stopwatches sw{skin};
        for (const QString &step : QString::fromLatin1(c.script).split(' ')) {
            if (step.startsWith('+'))
                sw.advance(step.mid(1).toLongLong());
            else
                sw.TimerFn(step.toInt());
        }
        SCOPED_TRACE(c.script);
        EXPECT_EQ(sw.current(), c.current);
        for (const auto &[timer, fields] : c.counters)
            EXPECT_EQ(counters(sw, timer), QString::fromLatin1(fields)) << "timer " << timer;
        EXPECT_EQ(skin.groups.value(Stopwatches::kGroup).toString(), QString::fromLatin1(c.shown));
    }
}

// Commands 70-75 are functions 1-6 and command 4 the split; a group in mode 5
// takes whole seconds, any other the text with its tenths.
TEST_F(StopwatchesTest, CommandsReachTheirFunctionsAndTheGroupsModeDecidesTheForm)
{
    sw.DoIt(72); // start
    sw.advance(61500);
    sw.DoIt(4);
    EXPECT_EQ(sw.field(0, 1), 1) << "split held";
    sw.DoIt(70);
    EXPECT_EQ(sw.current(), 1);
    sw.DoIt(71);
    EXPECT_EQ(shown(), "0:01:01.5");

    SkinDigitGroup seconds;
    seconds.number = Stopwatches::kGroup;
    seconds.mode = 5;
    skin.description.digitGroups = {seconds};
    sw.skinLoaded();
    EXPECT_EQ(skin.groups.value(Stopwatches::kGroup), QVariant(61));
}

TEST_F(StopwatchesTest, WallClockTicksAdvanceByTheTimeBetweenReadings)
{
    const QDateTime start(QDate(2026, 11, 23), QTime(23, 59, 59));
    sw.tick(start); // only sets the mark
    sw.TimerFn(3);
    for (int i = 1; i <= 8; ++i)
        sw.tick(start.addMSecs(250 * i));
    EXPECT_EQ(counters(sw, 0), "1 0 0 20");
    sw.tick(start.addSecs(-3600)); // clock set back
    sw.tick(QDateTime());
    EXPECT_EQ(counters(sw, 0), "1 0 0 20");
    sw.tick(start.addSecs(-3599));
    EXPECT_EQ(counters(sw, 0), "1 0 0 30");
}

} // namespace
