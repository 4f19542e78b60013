#include "core/clocktick.h"

#include "core/schedule.h"
#include "core/settings.h"
#include "platform/clock.h"
#include "platform/text.h"

namespace {

QString clockLabelText(const QTime &t, bool twentyFourHour)
{
    if (twentyFourHour)
        return twoDigits(t.hour()) + QLatin1Char(':') + twoDigits(t.minute()) +
               QLatin1String("   ");
    const int hour12 = t.hour() % 12 == 0 ? 12 : t.hour() % 12;
    return twoDigits(hour12) + QLatin1Char(':') + twoDigits(t.minute()) +
           (t.hour() < 12 ? QLatin1String(" AM") : QLatin1String(" PM"));
}

} // namespace

ClockTick::ClockTick(const Clock &clock, Settings &settings, const QStringList &autoList,
                     Actions actions)
    : m_clock(clock), m_settings(settings), m_autoList(autoList), m_actions(std::move(actions))
{
}

void ClockTick::setSnoozeMinutes(int minutes)
{
    m_snoozeStart = qMax(1, minutes);
    m_snoozeLeft = m_snoozeStart;
}

void ClockTick::MakeDayStr()
{
    const DayText texts = ::MakeDayStr(m_clock.now().date());
    m_todayLetter = texts.todayLetter;
    if (m_actions.makeDayStr)
        m_actions.makeDayStr(texts);
}

void ClockTick::label(int n, const QString &text) const
{
    if (m_actions.setLabel)
        m_actions.setLabel(n, text);
}

void ClockTick::showTime(const QTime &time)
{
    label(3, clockLabelText(time, m_settings.TimeFmt != 0));
    if (m_actions.setDD)
        m_actions.setDD(3, 0);
}

void ClockTick::ShowTime()
{
    const QTime time = m_clock.now().time();
    if (time.isValid())
        showTime(time);
}

void ClockTick::Timer2_Timer()
{
    const QDateTime now = m_clock.now();
    const QTime time = now.time();
    if (time.isValid()) {
        const QString text = time.toString(QStringLiteral("hh:mm:ss"));
        const QString second = text.right(2);
        if (second != m_lastSecond) {
            m_lastSecond = second;
            const QString hhmm = text.left(5);
            const bool minuteTick = second == QLatin1String("00");
            if (minuteTick) {
                showTime(time);
                if (text == QLatin1String("00:00:00"))
                    MakeDayStr();
            }
            refreshSnooze(minuteTick, hhmm);
            if (minuteTick && m_settings.Auto != 0)
                runSchedule(hhmm);
        }
    }
    if (m_actions.endOfTick)
        m_actions.endOfTick(now);
}

// The minute count restarts whenever the snooze is switched on and, once it
// has run out and acted, the snooze switches itself off. The time-of-day
// snooze stays on and acts again the next day.
void ClockTick::refreshSnooze(bool minuteTick, const QString &hhmm)
{
    const bool on = m_settings.Snooze != 0;
    if (on != m_snoozeWasOn) {
        m_snoozeWasOn = on;
        m_snoozeLeft = m_snoozeStart;
        if (!on)
            label(5, QString());
    }
    if (!on)
        return;

    if (m_settings.SnoozeMode != 0) {
        label(5, m_settings.SnoozeTime);
        if (minuteTick && hhmm == m_settings.SnoozeTime && m_actions.snoozeAction)
            m_actions.snoozeAction();
        return;
    }

    if (minuteTick)
        --m_snoozeLeft;
    label(5, twoDigits(m_snoozeLeft));
    if (m_snoozeLeft < 1) {
        m_settings.Snooze = 0;
        m_snoozeWasOn = false;
        m_snoozeLeft = m_snoozeStart;
        if (m_actions.snoozeAction)
            m_actions.snoozeAction();
        label(5, QString());
    }
}

void ClockTick::runSchedule(const QString &hhmm)
{
    // Indexed, not iterated: an action may reload the list under us.
    for (qsizetype i = 0; i < m_autoList.size(); ++i) {
        const QString entry = m_autoList.at(i);
        if (!entryApplies(entry, m_todayLetter))
            continue;
        const int preset = entryPreset(entry);
        if (entryOnTime(entry) == hhmm && m_actions.switchOn)
            m_actions.switchOn(preset);
        if (entryOffTime(entry) == hhmm && m_actions.switchOff)
            m_actions.switchOff();
    }
}
