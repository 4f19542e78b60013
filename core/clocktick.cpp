#include "core/clocktick.h"

#include "core/schedule.h"
#include "core/settings.h"
#include "platform/clock.h"
#include "platform/text.h"
#include "player/autolist.h"
#include "skin/skinsurface.h"

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

// The shipped skins show the clock on label 3 and group 3, the snooze on
// label 5, the day on label 14 and the date on label 21.
namespace {
constexpr int kClockLabel = 3, kClockGroup = 3, kSnoozeLabel = 5, kDayLabel = 14, kDateLabel = 21;
} // namespace

ClockTick::ClockTick(const Clock &clock, Settings &settings, SkinSurface &skin,
                     QString autoListFile)
    : m_clock(clock), m_settings(settings), m_skin(skin), m_autoListFile(std::move(autoListFile))
{
    m_timer2.setInterval(kIntervalMs);
    connect(&m_timer2, &QTimer::timeout, this, &ClockTick::Timer2_Timer);
}

void ClockTick::started()
{
    m_autoList = LoadAutoList(m_autoListFile);
    MakeDayStr();
    ShowTime();
    m_timer2.start();
}

bool ClockTick::setAutoList(const QStringList &list)
{
    m_autoList = list;
    return SaveAutoList(m_autoListFile, m_autoList);
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
    m_skin.setLabel(kDayLabel, texts.day);
    m_skin.setLabel(kDateLabel, texts.date);
}

void ClockTick::showTime(const QTime &time)
{
    m_skin.setLabel(kClockLabel, clockLabelText(time, m_settings.TimeFmt != 0));
    m_skin.SetDD(kClockGroup, 0);
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
    emit beat(now);
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
            m_skin.setLabel(kSnoozeLabel, QString());
    }
    if (!on)
        return;

    if (m_settings.SnoozeMode != 0) {
        m_skin.setLabel(kSnoozeLabel, m_settings.SnoozeTime);
        if (minuteTick && hhmm == m_settings.SnoozeTime)
            emit snoozeEnded();
        return;
    }

    if (minuteTick)
        --m_snoozeLeft;
    m_skin.setLabel(kSnoozeLabel, twoDigits(m_snoozeLeft));
    if (m_snoozeLeft < 1) {
        m_settings.Snooze = 0;
        m_snoozeWasOn = false;
        m_snoozeLeft = m_snoozeStart;
        emit snoozeEnded();
        m_skin.setLabel(kSnoozeLabel, QString());
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
        if (entryOnTime(entry) == hhmm)
            emit switchOn(preset);
        if (entryOffTime(entry) == hhmm)
            emit switchOff();
    }
}
