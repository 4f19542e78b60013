#pragma once

#include "platform/mediatest.h"

#include <QFile>

#include <memory>

// The real engine with silent sound and its pictures: a 1.5 s clip and a tone.
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

    EventLog log;
    std::unique_ptr<MediaDevice> device;
};
