#pragma once

#include "skin/daytext.h"
#include "skin/skinpart.h"

#include <QChar>
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

class Clock;
class SkinSurface;
struct Settings;

// The clock timer (Timer2) and its work: clock label and digit group, the
// day texts at midnight, the snooze and the automatic on/off schedule. It
// ticks every 250 ms so the second that reads "00" is never missed.
class ClockTick : public QObject, public SkinPart
{
    Q_OBJECT
public:
    static constexpr int DefaultSnoozeMinutes = 30;
    static constexpr int kIntervalMs = 250;

    // autoListFile: where the schedule list is kept.
    ClockTick(const Clock &clock, Settings &settings, SkinSurface &skin, QString autoListFile);

    // SkinPart: the schedule list is read, the day texts and the clock
    // shown, and the timer started.
    void started() override;
    void settingsChanged() override { ShowTime(); }

    void Timer2_Timer();
    // The clock label and group as the minute tick sets them, for start-up,
    // so the clock shows before its first full minute.
    void ShowTime();

    // Rebuilds the day texts and today's letter from the clock; start-up
    // calls it once, the tick again at midnight.
    void MakeDayStr();
    QChar todayLetter() const { return m_todayLetter; }

    const QStringList &autoList() const { return m_autoList; }
    // The preferences changed the list: it is written at once, since an
    // alarm set tonight must survive a crash before morning. False when the
    // file could not be written.
    bool setAutoList(const QStringList &list);

    // The count the minute snooze starts from each time "Snooze" is turned on.
    void setSnoozeMinutes(int minutes);
    int snoozeMinutes() const { return m_snoozeStart; }
    int snoozeRemaining() const { return m_snoozeLeft; }

signals:
    void switchOn(int preset);
    void switchOff();
    void snoozeEnded();
    // Every tick, last: what runs on the clock's beat (the stopwatches, the
    // switch-on fade, the lights).
    void beat(const QDateTime &now);

private:
    void showTime(const QTime &time);
    void refreshSnooze(bool minuteTick, const QString &hhmm);
    void runSchedule(const QString &hhmm);

    const Clock &m_clock;
    Settings &m_settings;
    SkinSurface &m_skin;
    QString m_autoListFile;
    QStringList m_autoList;
    QTimer m_timer2;

    QString m_lastSecond;
    QChar m_todayLetter;
    bool m_snoozeWasOn = false;
    int m_snoozeStart = DefaultSnoozeMinutes;
    int m_snoozeLeft = DefaultSnoozeMinutes;
};
