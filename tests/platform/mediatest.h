#pragma once

#include "platform/mediadevice.h"
#include "platform/mediadevicefactory.h"
#include "support/beats.h"
#include "support/testmedia.h"

#include <QList>
#include <QString>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

// What a device reported through its callbacks, for tests to wait on.
struct EventLog
{
    int opened = 0;
    int ended = 0;
    QList<qint64> reported; // every position, in order
    int failed = 0;
    int error = 0;
    QString text;

    MediaDevice::Events events()
    {
        return {[this] { ++opened; }, [this] { ++ended; }, [this](qint64 ms) { reported << ms; },
                [this](int e, const QString &t) {
                    ++failed;
                    error = e;
                    text = t;
                }};
    }
};

inline bool waitFor(const std::function<bool()> &done, int ms = 15000)
{
    return QTest::qWaitFor(done, ms);
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
        media = std::make_unique<TestMedia>();
        factory = std::make_unique<MediaDeviceFactory>();
    }
    static void TearDownTestSuite()
    {
        factory.reset();
        media.reset();
    }
    void SetUp() override { ASSERT_TRUE(factory->hasEngine()) << factory->problem().toStdString(); }

    static QString file(const char *name) { return media->file(QString::fromLatin1(name)); }

    // Opens a file of the suite's media by its name, or any other by its path.
    static std::unique_ptr<MediaDevice>
    openDevice(EventLog &log, const QString &name,
               const QString &type = QStringLiteral("MPEGVideo"),
               MediaDeviceFactory &from = *factory)
    {
        auto device = from.create();
        device->setEvents(log.events());
        device->setDeviceType(type);
        device->setFileName(name.contains('/') ? name : media->file(name));
        device->open();
        return device;
    }

    inline static std::unique_ptr<TestMedia> media;
    inline static std::unique_ptr<MediaDeviceFactory> factory;
};
