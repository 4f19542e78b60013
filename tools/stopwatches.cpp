#include "tools/stopwatches.h"

#include "skin/skindescription.h"
#include "skin/skinsurface.h"

#include <algorithm>

namespace {

constexpr qint64 TenthsPerHour = 36000;
// Hours live in a 16-bit field; beyond that the timer stays put.
constexpr qint64 MaxTenths = 32767 * TenthsPerHour + 35999;

} // namespace

qint64 Stopwatches::totalTenths(const std::array<qint16, Fields> &t)
{
    return t[2] * TenthsPerHour + t[3] * 600 + t[4];
}

void Stopwatches::setTotal(std::array<qint16, Fields> &t, qint64 tenths)
{
    tenths = std::clamp<qint64>(tenths, 0, MaxTenths);
    t[2] = qint16(tenths / TenthsPerHour);
    t[3] = qint16(tenths % TenthsPerHour / 600);
    t[4] = qint16(tenths % 600);
}

qint16 Stopwatches::field(int timer, int field) const
{
    if (timer < 0 || timer >= Count || field < 0 || field >= Fields)
        return 0;
    return m_timers[timer][field];
}

bool Stopwatches::anyRunning() const
{
    return std::any_of(m_timers.begin(), m_timers.end(), [](const auto &t) { return t[0] != 0; });
}

QString Stopwatches::text(int timer) const
{
    if (timer < 0 || timer >= Count)
        return {};
    const qint64 tenths = shownTenths(timer);
    const qint64 hours = tenths / TenthsPerHour;
    const qint64 minutes = tenths % TenthsPerHour / 600;
    const qint64 seconds = tenths % 600 / 10;
    return QStringLiteral("%1:%2:%3.%4")
        .arg(hours)
        .arg(minutes, 2, 10, QLatin1Char('0'))
        .arg(seconds, 2, 10, QLatin1Char('0'))
        .arg(tenths % 10);
}

void Stopwatches::TimerFn(int function)
{
    auto &cur = m_timers[m_current];
    switch (function) {
    case 0:
    case 6:
        m_timers = {};
        m_split = {};
        m_pendingMs = {};
        break;
    case 1:
        m_current = (m_current + 1) % Count;
        break;
    case 2:
        m_current = (m_current + Count - 1) % Count;
        break;
    case 3:
        cur[0] = qint16(1 - cur[0]);
        break;
    case 4:
        cur[2] = cur[3] = cur[4] = 0;
        m_split[m_current] = 0;
        m_pendingMs[m_current] = 0;
        break;
    case 5: {
        cur[0] = 0;
        m_current = (m_current + 1) % Count;
        auto &next = m_timers[m_current];
        next[2] = next[3] = next[4] = 0;
        next[0] = 1;
        m_split[m_current] = 0;
        m_pendingMs[m_current] = 0;
        break;
    }
    case 7:
        cur[1] = qint16(cur[1] ? 0 : 1);
        m_split[m_current] = totalTenths(cur);
        break;
    default:
        return;
    }
    m_skin.setLabel(kNumberLabel, QString::number(m_current));
    show();
}

void Stopwatches::advance(qint64 elapsedMs)
{
    if (elapsedMs > 0) {
        elapsedMs = std::min(elapsedMs, MaxTenths * 100);
        for (int i = 0; i < Count; ++i) {
            auto &t = m_timers[i];
            if (!t[0])
                continue;
            // Each timer keeps its own part of a tenth, so 250 ms steps add up.
            m_pendingMs[i] += elapsedMs;
            setTotal(t, totalTenths(t) + m_pendingMs[i] / 100);
            m_pendingMs[i] %= 100;
        }
    }
    show(false);
}

void Stopwatches::tick(const QDateTime &now)
{
    if (!now.isValid())
        return;
    const qint64 elapsed = m_last.isValid() ? m_last.msecsTo(now) : 0;
    m_last = now;
    advance(elapsed);
}

qint64 Stopwatches::shownTenths(int timer) const
{
    if (timer < 0 || timer >= Count)
        return 0;
    const auto &t = m_timers[size_t(timer)];
    return t[1] ? m_split[size_t(timer)] : totalTenths(t);
}

qint64 Stopwatches::shownSeconds(int timer) const
{
    return shownTenths(timer) / 10;
}

void Stopwatches::show(bool always)
{
    const QString shown = text(m_current);
    if (!always && shown == m_shown)
        return;
    m_shown = shown;
    const auto &groups = m_skin.skin().digitGroups;
    const bool seconds = std::any_of(groups.begin(), groups.end(), [](const SkinDigitGroup &g) {
        return g.number == kGroup && g.mode == 5;
    });
    if (seconds)
        m_skin.SetDD(kGroup, int(shownSeconds(m_current)));
    else
        m_skin.SetDD(kGroup, shown);
}

void Stopwatches::DoIt(qint16 cmd)
{
    if (cmd == 4)
        TimerFn(7);
    else if (cmd >= 70 && cmd < 76)
        TimerFn(cmd - 69);
}
