#pragma once

#include "skin/daytext.h"

#include <QChar>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>

class Clock;
struct Settings;

// The clock timer's work: clock label and digit group, the day texts at
// midnight, the snooze and the automatic on/off schedule. The window runs
// Timer2_Timer every 250 ms so the second that reads "00" is never missed.
class ClockTick
{
public:
    struct Actions
    {
        std::function<void(int label, const QString &text)> setLabel;
        std::function<void(int group, const QVariant &value)> setDD;
        std::function<void(const DayText &texts)> makeDayStr;
        std::function<void(int preset)> switchOn;
        std::function<void()> switchOff;
        std::function<void()> snoozeAction;
        // Every tick, last: what runs on the clock's beat (the stopwatches,
        // the switch-on fade).
        std::function<void(const QDateTime &now)> endOfTick;
    };

    static constexpr int DefaultSnoozeMinutes = 30;

    ClockTick(const Clock &clock, Settings &settings, const QStringList &autoList, Actions actions);

    void Timer2_Timer();
    // The clock label and group as the minute tick sets them, for start-up,
    // so the clock shows before its first full minute.
    void ShowTime();

    // Rebuilds the day texts and today's letter from the clock; start-up
    // calls it once, the tick again at midnight.
    void MakeDayStr();
    QChar todayLetter() const { return m_todayLetter; }

    // The count the minute snooze starts from each time "Snooze" is turned on.
    void setSnoozeMinutes(int minutes);
    int snoozeMinutes() const { return m_snoozeStart; }
    int snoozeRemaining() const { return m_snoozeLeft; }

private:
    void showTime(const QTime &time);
    void refreshSnooze(bool minuteTick, const QString &hhmm);
    void runSchedule(const QString &hhmm);
    void label(int n, const QString &text) const;

    const Clock &m_clock;
    Settings &m_settings;
    const QStringList &m_autoList;
    Actions m_actions;

    QString m_lastSecond;
    QChar m_todayLetter;
    bool m_snoozeWasOn = false;
    int m_snoozeStart = DefaultSnoozeMinutes;
    int m_snoozeLeft = DefaultSnoozeMinutes;
};
