#pragma once

#include "platform/mediadevice.h"
#include "platform/mediadevicefactory.h"
#include "support/testmedia.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QString>
#include <QThread>
#include <gtest/gtest.h>

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
inline bool waitFor(const std::function<bool()> &done, int ms = 4000)
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

// Suites on the real media engine: silent but timed sound (VELTO_AUDIO=null)
// and a folder of media made for the suite. A suite adds its media in its own
// SetUpTestSuite after calling this one.
class EngineSuite : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("VELTO_AUDIO", "null");
        media = new TestMedia;
        factory = new MediaDeviceFactory;
    }
    static void TearDownTestSuite()
    {
        delete factory;
        delete media;
        factory = nullptr;
        media = nullptr;
    }
    void SetUp() override { ASSERT_TRUE(factory->hasEngine()) << factory->problem().toStdString(); }

    static QString file(const char *name) { return media->file(QString::fromLatin1(name)); }

    inline static TestMedia *media = nullptr;
    inline static MediaDeviceFactory *factory = nullptr;
};
