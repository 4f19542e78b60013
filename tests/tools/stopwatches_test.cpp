#include "tools/stopwatches.h"

#include "support/printers.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

class StopwatchesTest : public ::testing::Test
{
protected:
    Stopwatches sw;
    QStringList labels;
    QString shown;

    void SetUp() override
    {
        sw.setLabelFn([this](int n, const QString &text) {
            labels << QStringLiteral("%1:%2").arg(n).arg(text);
        });
        sw.setDisplayFn([this](const QString &text) { shown = text; });
    }
    void run(const std::vector<int> &ops)
    {
        for (int op : ops)
            sw.TimerFn(op);
    }
    QString counters(int timer) const
    {
        return QStringLiteral("%1 %2 %3 %4")
            .arg(sw.field(timer, 0))
            .arg(sw.field(timer, 2))
            .arg(sw.field(timer, 3))
            .arg(sw.field(timer, 4));
    }
};

TEST_F(StopwatchesTest, SelectionWrapsBothWaysAndShowsOnLabel28)
{
    const struct
    {
        std::vector<int> ops;
        int current;
    } cases[] = {
        // clang-format off
        {{1}, 1}, {{2}, 9}, {{2, 2, 1}, 9}, {std::vector<int>(10, 1), 0},
        {std::vector<int>(9, 1), 9}, {{1, 1, 8, -1, 100, 2}, 1},
        // clang-format on
    };
    for (const auto &c : cases) {
        sw.TimerFn(6);
        run(std::vector<int>(sw.current(), 2)); // back to 0 whatever went before
        ASSERT_EQ(sw.current(), 0);
        labels.clear();
        run(c.ops);
        EXPECT_EQ(sw.current(), c.current);
        ASSERT_FALSE(labels.isEmpty());
        EXPECT_EQ(labels.last(), QStringLiteral("28:%1").arg(c.current));
    }
}

TEST_F(StopwatchesTest, RunningTimersCountHoursMinutesAndTenths)
{
    const struct
    {
        std::vector<qint64> steps;
        const char *text;
        const char *fields; // running, hours, minutes, tenths
    } cases[] = {
        {{250, 250, 250, 250}, "0:00:01.0", "1 0 0 10"},
        {{99}, "0:00:00.0", "1 0 0 0"},
        {{99, 1}, "0:00:00.1", "1 0 0 1"},
        {{59'999}, "0:00:59.9", "1 0 0 599"},
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
        EXPECT_EQ(shown, QString::fromLatin1(c.text));
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
    EXPECT_EQ(shown, "0:00:00.0");
    run({2, 3}); // stop 2
    sw.advance(1000);
    EXPECT_EQ(counters(2), "0 0 0 20");
    EXPECT_EQ(counters(0), "1 0 0 30");

    labels.clear();
    shown.clear();
    run({8, 9, -1, 70, 32767}); // unknown codes
    EXPECT_TRUE(labels.isEmpty() && shown.isEmpty());
    EXPECT_EQ(std::tuple(sw.current(), counters(0), counters(2)),
              std::tuple(2, QString("1 0 0 30"), QString("0 0 0 20")));
}

TEST_F(StopwatchesTest, LapStopsCurrentAndStartsTheNextFromZero)
{
    const struct
    {
        int from;
        int to;
    } cases[] = {{0, 1}, {3, 4}, {9, 0}};
    for (const auto &c : cases) {
        sw.TimerFn(6);
        // Give every timer a count, then make `from` current and running.
        for (int t = 0; t < 10; ++t) {
            run({3});
            sw.advance(1000);
            run({3, 1});
        }
        run(std::vector<int>((c.from - sw.current() + 10) % 10, 1));
        run({3});
        sw.advance(500);
        labels.clear();
        sw.TimerFn(5);
        EXPECT_EQ(sw.current(), c.to);
        EXPECT_EQ(labels, QStringList{QStringLiteral("28:%1").arg(c.to)});
        EXPECT_EQ(counters(c.from), "0 0 0 15") << "lap from " << c.from;
        EXPECT_EQ(counters(c.to), "1 0 0 0") << "lap from " << c.from;
        sw.advance(300);
        EXPECT_EQ(counters(c.to), "1 0 0 3");
        EXPECT_EQ(shown, "0:00:00.3");
    }
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
    EXPECT_EQ(shown, "0:00:01.2");
    EXPECT_EQ(sw.shownSeconds(0), 1); // what the digit display counts
    EXPECT_EQ(counters(0), "1 0 0 42");
    run({7});
    EXPECT_EQ(sw.field(0, 1), 0);
    EXPECT_EQ(shown, "0:00:04.2");
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

TEST(Stopwatches, OutOfRangeQueriesAnswerNeutrally)
{
    Stopwatches sw;
    sw.TimerFn(3); // no callbacks set
    EXPECT_EQ(sw.field(-1, 0), 0);
    EXPECT_EQ(sw.field(10, 0), 0);
    EXPECT_EQ(sw.field(0, 5), 0);
    EXPECT_EQ(sw.field(0, 0), 1);
    EXPECT_TRUE(sw.text(10).isEmpty());
}

} // namespace
