#include "tools/stopwatches.h"

#include "support/printers.h"
#include "support/recordingsurface.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

// Notes every label text in order; group 6 as RecordingSurface keeps it.
class LabelLog : public RecordingSurface
{
public:
    QStringList written;
    void setLabel(int n, const QString &text) override
    {
        written << QStringLiteral("%1:%2").arg(n).arg(text);
    }
};

class StopwatchesTest : public ::testing::Test
{
protected:
    LabelLog skin;
    Stopwatches sw{skin};
    QStringList &labels = skin.written;
    QString shown() const { return skin.groups.value(Stopwatches::kGroup).toString(); }

    void run(const std::vector<int> &ops)
    {
        for (int op : ops)
            sw.TimerFn(op);
    }
    // Running, hours, minutes, tenths.
    QString counters(int t) const
    {
        return QString::asprintf("%d %d %d %d", sw.field(t, 0), sw.field(t, 2), sw.field(t, 3),
                                 sw.field(t, 4));
    }
};

TEST_F(StopwatchesTest, SelectionWrapsBothWaysAndShowsOnLabel28)
{
    const std::pair<int, int> steps[] = {{2, 9}, {1, 0}, {1, 1}, {2, 0}};
    for (const auto &[op, current] : steps) {
        sw.TimerFn(op);
        EXPECT_EQ(sw.current(), current);
        EXPECT_EQ(labels.last(), QStringLiteral("28:%1").arg(current));
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
        {{250, 250, 250, 250}, "0:00:01.0", "1 0 0 10"},
        {{99, 1}, "0:00:00.1", "1 0 0 1"},
        {{60'000}, "0:01:00.0", "1 0 1 0"},
        {{3'599'900, 100}, "1:00:00.0", "1 1 0 0"},
        {{45'296'700}, "12:34:56.7", "1 12 34 567"},
        {{1000, -5000, 0}, "0:00:01.0", "1 0 0 10"},
        {{std::numeric_limits<qint64>::max(), 1000}, "32767:59:59.9", "1 32767 59 599"},
    };
    for (const auto &c : cases) {
        sw.TimerFn(6);
        sw.TimerFn(3);
        for (qint64 ms : c.steps)
            sw.advance(ms);
        EXPECT_EQ(shown(), QString::fromLatin1(c.text));
        EXPECT_EQ(sw.text(0), QString::fromLatin1(c.text));
        EXPECT_EQ(counters(0), QString::fromLatin1(c.fields)) << c.text;
    }
}

TEST_F(StopwatchesTest, OnlyRunningTimersAdvanceAndUnknownCodesChangeNothing)
{
    run({3, 1, 1, 3, 1}); // 0 and 2 running, 3 current and stopped
    sw.advance(2000);
    EXPECT_EQ(counters(0), "1 0 0 20");
    EXPECT_EQ(counters(1), "0 0 0 0");
    EXPECT_EQ(counters(2), "1 0 0 20");
    EXPECT_EQ(shown(), "0:00:00.0");
    run({2, 3}); // stop 2
    sw.advance(1000);
    EXPECT_EQ(counters(2), "0 0 0 20");
    EXPECT_EQ(counters(0), "1 0 0 30");

    labels.clear();
    skin.groups.clear();
    run({8, 9, -1, 70, 32767}); // unknown codes
    EXPECT_TRUE(labels.isEmpty() && shown().isEmpty());
    EXPECT_EQ(std::tuple(sw.current(), counters(0), counters(2)),
              std::tuple(2, QString("1 0 0 30"), QString("0 0 0 20")));

    // Out of range queries answer neutrally.
    EXPECT_EQ(std::tuple(sw.field(-1, 0), sw.field(10, 0), sw.field(0, 5)), std::tuple(0, 0, 0));
    EXPECT_TRUE(sw.text(10).isEmpty());
}

TEST_F(StopwatchesTest, LapStopsCurrentAndStartsTheNextFromZero)
{
    // Laps from the last timer wrap to the first, stopped with a count to clear.
    run({3, 2, 3});
    sw.advance(1500);
    run({1, 3, 2});
    labels.clear();
    sw.TimerFn(5);
    EXPECT_EQ(sw.current(), 0);
    EXPECT_EQ(labels, QStringList{QStringLiteral("28:0")});
    EXPECT_EQ(counters(9), "0 0 0 15");
    EXPECT_EQ(counters(0), "1 0 0 0");
    sw.advance(300);
    EXPECT_EQ(counters(0), "1 0 0 3");
    EXPECT_EQ(counters(9), "0 0 0 15");
    EXPECT_EQ(shown(), "0:00:00.3");
}

TEST_F(StopwatchesTest, ResetsClearCountersAndResetAllStopsEverything)
{
    for (int op : {0, 6}) {
        run({3, 1, 3, 1, 3});
        sw.advance(4200);
        run({4});
        EXPECT_EQ(counters(2), "1 0 0 0") << "reset current keeps it running";
        EXPECT_EQ(counters(1), "1 0 0 42");
        sw.TimerFn(op);
        for (int t = 0; t < 10; ++t)
            EXPECT_EQ(counters(t), "0 0 0 0") << "op " << op << " timer " << t;
        EXPECT_EQ(sw.current(), 2) << "reset all keeps the selection";
        sw.advance(1000);
        EXPECT_EQ(counters(0), "0 0 0 0");
        run({2, 2});
    }
}

TEST_F(StopwatchesTest, SplitHoldsTheDisplayWhileTheTimerRunsOn)
{
    run({3});
    sw.advance(1200);
    run({7});
    EXPECT_EQ(sw.field(0, 1), 1);
    sw.advance(3000);
    EXPECT_EQ(shown(), "0:00:01.2");
    EXPECT_EQ(sw.shownSeconds(0), 1); // what the digit display counts
    EXPECT_EQ(counters(0), "1 0 0 42");
    run({7});
    EXPECT_EQ(sw.field(0, 1), 0);
    EXPECT_EQ(shown(), "0:00:04.2");
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
    run({3});
    for (int i = 1; i <= 8; ++i)
        sw.tick(start.addMSecs(250 * i));
    EXPECT_EQ(counters(0), "1 0 0 20");
    sw.tick(start.addSecs(-3600)); // clock set back
    sw.tick(QDateTime());
    EXPECT_EQ(counters(0), "1 0 0 20");
    sw.tick(start.addSecs(-3599));
    EXPECT_EQ(counters(0), "1 0 0 30");
}

} // namespace
