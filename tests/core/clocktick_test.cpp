#include "core/clocktick.h"

#include "core/schedule.h"
#include "core/settings.h"
#include "support/fakes.h"

#include <gtest/gtest.h>

#include <QSet>

namespace {

// Runs the tick against a scripted clock and writes down what reached the
// window, one line per action.
class ClockTickTest : public ::testing::Test
{
protected:
    FakeClock clock;
    Settings settings;
    QStringList autoList;
    QStringList events;
    int ticks = 0;
    ClockTick tick{clock, settings, autoList, actions()};

    ClockTick::Actions actions()
    {
        ClockTick::Actions a;
        a.setLabel = [this](int n, const QString &text) {
            events << QStringLiteral("label %1 [%2]").arg(n).arg(text);
        };
        a.setDD = [this](int group, const QVariant &v) {
            events << QStringLiteral("dd %1 %2").arg(group).arg(v.toString());
        };
        a.makeDayStr = [this](const DayText &t) {
            events << QStringLiteral("day %1").arg(t.todayLetter);
        };
        a.switchOn = [this](int preset) { events << QStringLiteral("on %1").arg(preset); };
        a.switchOff = [this] { events << QStringLiteral("off"); };
        a.snoozeAction = [this] { events << QStringLiteral("snooze"); };
        a.endOfTick = [this](const QDateTime &) { ++ticks; };
        return a;
    }

    void setNow(const QDate &d, const QTime &t) { clock.time = QDateTime(d, t); }

    // Ticks every 250 ms from the clock's time up to and including last.
    void runUntil(const QDateTime &last)
    {
        while (clock.time <= last) {
            tick.Timer2_Timer();
            clock.time = clock.time.addMSecs(250);
        }
    }
    void runSeconds(int seconds) { runUntil(clock.time.addSecs(seconds)); }

    QStringList only(const QString &prefix) const
    {
        QStringList r;
        for (const QString &e : events)
            if (e.startsWith(prefix))
                r << e;
        return r;
    }
    QStringList switching() const { return only(QStringLiteral("o")) + only(QStringLiteral("s")); }
};

const QDate Monday(2026, 11, 23);

TEST_F(ClockTickTest, WeekOfScheduleFiresEachDayCodeOnItsDays)
{
    ASSERT_EQ(Monday.dayOfWeek(), 1);
    settings.Auto = 1;
    const struct
    {
        char code;
        int preset;
    } entries[] = {{'M', 1}, {'T', 2}, {'W', 3}, {'R', 4},  {'F', 5},  {'S', 6},
                   {'U', 7}, {'D', 8}, {'N', 9}, {'E', 10}, {'m', 11}, {'X', 12}};
    for (const auto &e : entries)
        autoList << *makeEntry(QChar::fromLatin1(e.code), QStringLiteral("07:30"),
                               QStringLiteral("21:15"), e.preset);
    // Off at midnight belongs to the day that begins then.
    autoList << *makeEntry(QChar('D'), QStringLiteral("06:00"), QStringLiteral("00:00"), 13);

    const struct
    {
        const char *morning; // presets switched on at 07:30, in list order
        int offsAt2115;
        bool weekday;
    } week[] = {
        {"on 1,on 8,on 10", 3, true},  // Monday
        {"on 2,on 8,on 10", 3, true},  // Tuesday
        {"on 3,on 8,on 10", 3, true},  // Wednesday
        {"on 4,on 8,on 10", 3, true},  // Thursday
        {"on 5,on 8,on 10", 3, true},  // Friday
        {"on 6,on 9,on 10", 3, false}, // Saturday
        {"on 7,on 9,on 10", 3, false}, // Sunday
    };

    // Enter the week through midnight, so the day letter comes from the tick.
    setNow(Monday.addDays(-1), QTime(23, 59, 58));
    runSeconds(3);
    ASSERT_EQ(tick.todayLetter(), QChar('M'));
    for (int d = 0; d < 7; ++d) {
        const QDate day = Monday.addDays(d);
        events.clear();
        setNow(day, QTime(5, 59, 59));
        runSeconds(2);
        EXPECT_EQ(switching(), week[d].weekday ? QStringList{"on 13"} : QStringList{})
            << "day " << d;

        events.clear();
        setNow(day, QTime(7, 29, 58));
        runSeconds(4);
        EXPECT_EQ(switching().join(','), QString::fromLatin1(week[d].morning)) << "day " << d;

        events.clear();
        setNow(day, QTime(21, 14, 59));
        runSeconds(2);
        EXPECT_EQ(only(QStringLiteral("off")).size(), week[d].offsAt2115) << "day " << d;

        events.clear();
        setNow(day, QTime(23, 59, 58));
        runSeconds(3);
        const bool nextIsWeekday = d + 1 < 5 || d + 1 == 7;
        EXPECT_EQ(only(QStringLiteral("off")).size(), nextIsWeekday ? 1 : 0)
            << "midnight after " << d;
        EXPECT_EQ(only(QStringLiteral("day")),
                  QStringList{QStringLiteral("day %1").arg(QStringLiteral("TWRFSUM")[d])})
            << "midnight after " << d;
    }
}

TEST_F(ClockTickTest, OnRunsBeforeOffWhenBothFallInTheSameMinute)
{
    settings.Auto = 1;
    tick.MakeDayStr();
    autoList << QStringLiteral("E 12:00 12:00 05") << QStringLiteral("E 11:59 12:00 02")
             << QStringLiteral("E 12:00 13:00 07");
    setNow(Monday, QTime(11, 59, 59));
    runSeconds(2);
    EXPECT_EQ(switching(), (QStringList{"on 5", "off", "off", "on 7"}));
}

TEST_F(ClockTickTest, ScheduleRunsOnlyWhileAutoIsOn)
{
    const struct
    {
        qint16 autoFlag;
        int switches;
    } cases[] = {{0, 0}, {1, 2}, {-1, 2}};
    autoList << QStringLiteral("E 08:00 08:01 03") << QStringLiteral("D 08:00 08:01 03");
    for (const auto &c : cases) {
        settings.Auto = c.autoFlag;
        events.clear();
        setNow(Monday, QTime(7, 59, 58));
        tick.MakeDayStr();
        runSeconds(3);
        EXPECT_EQ(only(QStringLiteral("on 3")).size(), c.switches) << "Auto " << c.autoFlag;
    }
}

TEST_F(ClockTickTest, MinuteWorkRunsOnlyInTheTickThatSeesSecondZero)
{
    settings.Auto = 1;
    autoList << QStringLiteral("E 07:30 07:31 01");
    tick.MakeDayStr();

    // The timer stalls across 07:30:00: that minute does nothing.
    setNow(Monday, QTime(7, 29, 59));
    tick.Timer2_Timer();
    setNow(Monday, QTime(7, 30, 1));
    tick.Timer2_Timer();
    EXPECT_TRUE(switching().isEmpty());
    EXPECT_TRUE(only(QStringLiteral("label 3")).isEmpty());
    EXPECT_TRUE(only(QStringLiteral("dd")).isEmpty());

    // Four ticks inside 07:31:00 act once.
    events.clear();
    setNow(Monday, QTime(7, 30, 59));
    runSeconds(2);
    EXPECT_EQ(switching(), QStringList{"off"});
    EXPECT_EQ(only(QStringLiteral("dd")), QStringList{"dd 3 0"});
    EXPECT_EQ(ticks, 2 + 9);
}

TEST_F(ClockTickTest, ClockLabelFollowsTheTimeFormat)
{
    const struct
    {
        QTime time;
        qint16 timeFmt;
        const char *label;
    } cases[] = {
        {QTime(0, 0), 0, "12:00 AM"},    {QTime(0, 5), 0, "12:05 AM"},
        {QTime(7, 30), 0, "07:30 AM"},   {QTime(11, 59), 0, "11:59 AM"},
        {QTime(12, 0), 0, "12:00 PM"},   {QTime(19, 30), 0, "07:30 PM"},
        {QTime(23, 59), 0, "11:59 PM"},  {QTime(0, 0), 1, "00:00   "},
        {QTime(7, 30), 1, "07:30   "},   {QTime(19, 30), 1, "19:30   "},
        {QTime(23, 59), -1, "23:59   "},
    };
    for (const auto &c : cases) {
        settings.TimeFmt = c.timeFmt;
        events.clear();
        setNow(Monday, c.time.addSecs(-1));
        runSeconds(2);
        EXPECT_EQ(only(QStringLiteral("label 3")),
                  QStringList{QStringLiteral("label 3 [%1]").arg(QLatin1String(c.label))})
            << c.time.toString().toStdString() << " TimeFmt " << c.timeFmt;
    }
}

TEST_F(ClockTickTest, MinuteSnoozeCountsDownAndActsOnce)
{
    settings.Snooze = 1;
    tick.setSnoozeMinutes(2);
    setNow(Monday, QTime(22, 0, 58));
    runSeconds(1);
    EXPECT_EQ(only(QStringLiteral("label 5")), (QStringList{"label 5 [02]", "label 5 [02]"}));

    events.clear();
    runSeconds(60); // 22:01:00 .. 22:01:59
    EXPECT_EQ(only(QStringLiteral("label 5")).first(), "label 5 [01]");
    EXPECT_TRUE(only(QStringLiteral("snooze")).isEmpty());

    events.clear();
    runSeconds(180);
    EXPECT_EQ(only(QStringLiteral("snooze")).size(), 1);
    EXPECT_EQ(only(QStringLiteral("label 5")), (QStringList{"label 5 [00]", "label 5 []"}));
    EXPECT_EQ(settings.Snooze, 0);

    // Switched on again, the count starts over.
    settings.Snooze = 1;
    events.clear();
    setNow(Monday, QTime(22, 10, 20));
    runSeconds(1);
    EXPECT_EQ(only(QStringLiteral("label 5")).last(), "label 5 [02]");
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
        EXPECT_EQ(only(QStringLiteral("snooze")).size(), 1) << "day " << day;
        const QStringList labels = only(QStringLiteral("label 5"));
        EXPECT_EQ(QSet<QString>(labels.begin(), labels.end()), QSet<QString>{"label 5 [23:30]"});
        EXPECT_EQ(settings.Snooze, 1);
    }
    // An unparsable time never matches a minute.
    settings.SnoozeTime = QStringLiteral("soon");
    events.clear();
    setNow(Monday, QTime(23, 29, 58));
    runSeconds(4);
    EXPECT_TRUE(only(QStringLiteral("snooze")).isEmpty());
}

TEST_F(ClockTickTest, SnoozeSwitchedOffClearsItsLabelOnce)
{
    settings.Snooze = 1;
    setNow(Monday, QTime(9, 0, 1));
    runSeconds(1);
    settings.Snooze = 0;
    events.clear();
    runSeconds(120);
    EXPECT_EQ(only(QStringLiteral("label 5")), QStringList{"label 5 []"});
    EXPECT_TRUE(only(QStringLiteral("snooze")).isEmpty());
}

TEST_F(ClockTickTest, InvalidClockReadingDoesNothing)
{
    settings.Auto = 1;
    settings.Snooze = 1;
    autoList << QStringLiteral("E 00:00 00:00 01");
    clock.time = QDateTime();
    tick.Timer2_Timer();
    tick.Timer2_Timer();
    EXPECT_TRUE(events.isEmpty());
    EXPECT_EQ(ticks, 2);
}

} // namespace
