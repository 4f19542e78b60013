#pragma once

#include <QTest>
#include <QTimer>

// Runs the event loop until a timer started now has fired `beats` times. A
// timer of the same interval that was already running fires before the second
// beat (a coarse timer moves by at most 5 %), so by then whatever it would do
// has been done: the sentinel for checks that something did not happen.
inline bool waitBeats(int intervalMs, int beats = 2)
{
    QTimer beat;
    beat.setTimerType(Qt::PreciseTimer);
    beat.setInterval(intervalMs);
    int seen = 0;
    QObject::connect(&beat, &QTimer::timeout, [&seen] { ++seen; });
    beat.start();
    // The margin is for a busy machine only: the beats end the wait.
    return QTest::qWaitFor([&seen, beats] { return seen >= beats; }, intervalMs * beats + 30000);
}
