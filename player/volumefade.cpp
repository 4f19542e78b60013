#include "volumefade.h"

#include "platform/clock.h"

#include <QtMath>

void VolumeFade::set(int level)
{
    if (level == m_lastLevel)
        return;
    m_lastLevel = level;
    if (setLevel)
        setLevel(level);
}

void VolumeFade::start(int target, int durationMs)
{
    m_target = qMax(0, target);
    m_durationMs = durationMs;
    m_start = m_clock.now();
    m_lastLevel = -1;
    m_running = true;
    if (durationMs <= 0 || !m_start.isValid()) {
        finish();
        return;
    }
    set(0);
}

void VolumeFade::fadeIn(int durationMs)
{
    if (m_running)
        start(m_target, durationMs);
    else if (readLevel)
        start(readLevel(), durationMs);
}

void VolumeFade::tick()
{
    if (!m_running)
        return;
    const QDateTime now = m_clock.now();
    // A clock that fails or is set back must not hold an alarm at a whisper.
    if (!now.isValid() || now < m_start) {
        finish();
        return;
    }
    const qint64 elapsed = m_start.msecsTo(now);
    if (elapsed >= m_durationMs) {
        finish();
        return;
    }
    // Loudness grows roughly with the square of the gain, so a squared ramp
    // sounds like an even rise rather than a jump followed by a crawl.
    const double p = double(elapsed) / m_durationMs;
    set(qRound(m_target * p * p));
}

void VolumeFade::finish()
{
    if (!m_running)
        return;
    m_running = false;
    set(m_target);
}
