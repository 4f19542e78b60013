#pragma once

#include "platform/mediatest.h"

#include <QFile>
#include <QGuiApplication>

#include <memory>

// The real engine with silent sound, drawing through OpenGL on the test's X
// server (Mesa's software renderer is enough): a 1.5 s clip and a tone.
class VideoSuite : public EngineSuite
{
protected:
    static void SetUpTestSuite()
    {
        EngineSuite::SetUpTestSuite();
        media->video(QStringLiteral("clip.avi"), 1500);
        media->encoded(QStringLiteral("tone.mp3"), 800);
    }

    void SetUp() override
    {
        if (!QFile::exists(file("clip.avi")))
            GTEST_SKIP() << "ffmpeg could not make the test media";
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            GTEST_SKIP() << "pictures need the X server (run through scripts/with-display)";
        EngineSuite::SetUp();
        device = factory->create();
        device->setEvents(log.events());
    }

    void play(const char *name = "clip.avi")
    {
        device->setDeviceType(QStringLiteral("MPEGVideo"));
        device->setFileName(file(name));
        device->open();
        device->play();
    }

    // OpenGL in software costs a loaded machine far more than sound does.
    static bool waitLong(const std::function<bool()> &done) { return waitFor(done, 15000); }

    EventLog log;
    std::unique_ptr<MediaDevice> device;
};
