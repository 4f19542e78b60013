#pragma once

#include "platform/mediadevice.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QString>
#include <QThread>

#include <functional>

// What a device reported through its callbacks, for tests to wait on.
struct EventLog
{
    int opened = 0;
    int ended = 0;
    int positions = 0;
    int failed = 0;
    int error = 0;
    QString text;

    MediaDevice::Events events()
    {
        return {[this] { ++opened; }, [this] { ++ended; }, [this](qint64) { ++positions; },
                [this](int e, const QString &t) {
                    ++failed;
                    error = e;
                    text = t;
                }};
    }
};

// Runs the event loop until `done` holds or `ms` pass; returns `done()`.
inline bool waitFor(const std::function<bool()> &done, int ms = 3000)
{
    QDeadlineTimer deadline(ms);
    while (!done() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::msleep(2);
    }
    return done();
}

inline void spin(int ms)
{
    waitFor([] { return false; }, ms);
}
