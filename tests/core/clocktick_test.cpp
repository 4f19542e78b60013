#include "core/clocktick.h"

#include "core/schedule.h"
#include "core/settings.h"
#include "support/fakes.h"
#include "support/recordingsurface.h"
#include "support/temphome.h"

#include <gtest/gtest.h>

#include <QSet>

namespace {

// What reached the skin, one line per write, in order with the tick's signals.
class LoggingSurface : public RecordingSurface
{
public:
    explicit LoggingSurface(QStringList &events) : m_events(events) {}
    void setLabel(int n, const QString &text) override
    {
        m_events << QStringLiteral("label %1 [%2]").arg(n).arg(text);
    }

private:
    QStringList &m_events;
};

// Runs the tick against a scripted clock and writes down what reached the
// window, one line per action.
class ClockTickTest : public ::testing::Test
{
protected:
    ClockTickTest()
    {
        QObject::connect(&tick, &ClockTick::switchOn, &tick,
                         [this](int preset) { events << QStringLiteral("on %1").arg(preset); });
        QObject::connect(&tick, &ClockTick::switchOff, &tick,
                         [this] { events << QStringLiteral("off"); });
        QObject::connect(&tick, &ClockTick::snoozeEnded, &tick,
                         [this] { events << QStringLiteral("snooze"); });
    }

    TempHome home;
    FakeClock clock;
    Settings settings;
    QStringList events;
    LoggingSurface skin{events};
    ClockTick tick{clock, settings, skin, home.file(QStringLiteral("autolist.txt"))};

    void schedule(const QStringList &entries) { ASSERT_TRUE(tick.setAutoList(entries)); }

    void setNow(const QDate &d, const QTime &t) { clock.time = QDateTime(d, t); }

    // Ticks every 250 ms for `seconds` seconds, both ends included.
    void runSeconds(int seconds)
    {
        for (const QDateTime last = clock.time.addSecs(seconds); clock.time <= last;
             clock.time = clock.time.addMSecs(250))
            tick.Timer2_Timer();
    }

    QStringList only(const QString &prefix) const
    {
        QStringList r;
        for (const QString &e : events)
            if (e.startsWith(prefix))
                r << e;
        return r;
    }
    QStringList switching() const { return only("o") + only("s"); }
};

const QDate Monday(2026, 11, 23);

// Each row ticks from each start for its seconds (0: one tick) and lists the
// switching that reached the window. Which codes match which weekday is
// schedule_test's; here the tick must use the day its midnight tick begins,
// for that minute's entries too.
TEST_F(ClockTickTest, ScheduleSwitchesInTheMinutesItsTicksSee)
{
    const QStringList week = {"M 07:30 21:15 01", "D 07:30 21:15 02", "N 07:30 21:15 03",
                              "D 06:00 00:00 04"};
    const QStringList noon = {"E 12:00 12:00 05", "E 11:59 12:00 02", "E 12:00 13:00 07"};
    const QDateTime monday(Monday, QTime(0, 0)), saturday(Monday.addDays(5), QTime(0, 0));
    const QDateTime mondayAt0730 = monday.addSecs(7 * 3600 + 30 * 60);
    const QDateTime saturdayAt0730 = saturday.addSecs(7 * 3600 + 30 * 60);
    const QDateTime mondayNoon = monday.addSecs(12 * 3600);
    const struct
    {
        qint16 autoFlag;
        QStringList entries;
        std::vector<std::pair<QDateTime, int>> runs;
        char day;
        const char *switching;
    } cases[] = {
        {1, week, {{monday.addSecs(-1), 2}, {mondayAt0730.addSecs(-1), 2}}, 'M', "off,on 1,on 2"},
        {1, week, {{saturday.addSecs(-1), 2}, {saturdayAt0730.addSecs(-1), 2}}, 'S', "on 3"},
        // On runs before off in the same minute, and only while Auto is on.
        {1, noon, {{mondayNoon.addSecs(-1), 2}}, 'M', "on 5,off,off,on 7"},
        {0, noon, {{mondayNoon.addSecs(-1), 2}}, 'M', ""},
        // A timer stalled across 07:30:00 misses that minute; four ticks in
        // 07:31:00 act once.
        {1,
         {"E 07:30 07:31 01"},
         {{mondayAt0730.addSecs(-1), 0}, {mondayAt0730.addSecs(1), 0}},
         'M',
         ""},
        {1, {"E 07:30 07:31 01"}, {{mondayAt0730.addSecs(59), 2}}, 'M', "off"},
    };
    for (const auto &c : cases) {
        settings.Auto = c.autoFlag;
        schedule(c.entries);
        clock.time = c.runs.front().first;
        tick.MakeDayStr();
        events.clear();
        for (const auto &[from, seconds] : c.runs) {
            clock.time = from;
            runSeconds(seconds);
        }
        EXPECT_EQ(tick.todayLetter(), QLatin1Char(c.day));
        EXPECT_EQ(switching().join(','), QLatin1String(c.switching))
            << c.entries.join('|').toStdString() << " Auto " << c.autoFlag;
    }
}

TEST_F(ClockTickTest, ClockLabelFollowsTheTimeFormat)
{
    const std::tuple<QTime, qint16, const char *> cases[] = {
        {QTime(0, 5), 0, "12:05 AM"},    {QTime(12, 0), 0, "12:00 PM"},
        {QTime(19, 30), 0, "07:30 PM"},  {QTime(0, 0), 1, "00:00   "},
        {QTime(19, 30), -1, "19:30   "},
    };
    for (const auto &[time, timeFmt, label] : cases) {
        settings.TimeFmt = timeFmt;
        events.clear();
        setNow(Monday, time.addSecs(-1));
        runSeconds(2);
        EXPECT_EQ(only("label 3"),
                  QStringList{QStringLiteral("label 3 [%1]").arg(QLatin1String(label))})
            << time.toString().toStdString() << " TimeFmt " << timeFmt;
    }
}

TEST_F(ClockTickTest, MinuteSnoozeCountsDownActsOnceAndClearsItsLabelWhenOff)
{
    settings.Snooze = 1;
    tick.setSnoozeMinutes(2);
    setNow(Monday, QTime(22, 0, 58));
    runSeconds(1);
    EXPECT_EQ(only("label 5"), (QStringList{"label 5 [02]", "label 5 [02]"}));

    events.clear();
    runSeconds(60); // 22:01:00 .. 22:01:59
    EXPECT_EQ(only("label 5").first(), "label 5 [01]");
    EXPECT_TRUE(only("snooze").isEmpty());

    events.clear();
    runSeconds(180);
    EXPECT_EQ(only("snooze").size(), 1);
    EXPECT_EQ(only("label 5"), (QStringList{"label 5 [00]", "label 5 []"}));
    EXPECT_EQ(settings.Snooze, 0);

    // Switched on again and off early, the label is cleared once and nothing happens.
    settings.Snooze = 1;
    setNow(Monday, QTime(22, 10, 20));
    runSeconds(1);
    settings.Snooze = 0;
    events.clear();
    runSeconds(180);
    EXPECT_EQ(only("label 5"), QStringList{"label 5 []"});
    EXPECT_TRUE(only("snooze").isEmpty());
}

TEST_F(ClockTickTest, TimeOfDaySnoozeActsInItsMinuteEveryDay)
{
    settings.Snooze = 1;
    settings.SnoozeMode = 1;
    settings.SnoozeTime = QStringLiteral("23:30");
    for (int day = 0; day < 2; ++day) {
        events.clear();
        setNow(Monday.addDays(day), QTime(23, 28, 58));
        runSeconds(150);
        EXPECT_EQ(only("snooze").size(), 1) << "day " << day;
        const QStringList labels = only("label 5");
        EXPECT_EQ(QSet<QString>(labels.begin(), labels.end()), QSet<QString>{"label 5 [23:30]"});
        EXPECT_EQ(settings.Snooze, 1);
    }
}

} // namespace
