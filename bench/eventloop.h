#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

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
