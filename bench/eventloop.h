#pragma once

#include "bench/procstat.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <functional>

// Runs what the event loop has waiting, once.
inline void pump()
{
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

// Pumps the event loop until done() holds or ms pass; returns done().
inline bool waitFor(const std::function<bool()> &done, int ms)
{
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < ms)
        pump();
    return done();
}

// From its making on, the longest the event loop went without a turn: by the
// clock, what the user waits (other programs' time included), and in the UI
// thread's own processor time, what the program itself kept them waiting.
// A turn is a timeout of a timer of intervalMs (0: every pass of the loop).
class LoopGaps
{
public:
    explicit LoopGaps(int intervalMs = 0)
    {
        m_turn.setInterval(intervalMs);
        QObject::connect(&m_turn, &QTimer::timeout, &m_turn, [this] {
            m_longest = longestMs();
            m_longestCpu = longestCpuMs();
            m_sinceTurn.restart();
            m_cpuAtTurn = threadCpuMs();
        });
        m_sinceTurn.start();
        m_turn.start();
    }
    // The gap still open counts too.
    double longestMs() const
    {
        return std::max(m_longest, double(m_sinceTurn.nsecsElapsed()) / 1e6);
    }
    double longestCpuMs() const { return std::max(m_longestCpu, threadCpuMs() - m_cpuAtTurn); }

private:
    QTimer m_turn;
    QElapsedTimer m_sinceTurn;
    double m_cpuAtTurn = threadCpuMs();
    double m_longest = 0, m_longestCpu = 0;
};
