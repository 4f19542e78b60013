#include "app/videooutput.h"
#include "platform/mediatest.h"
#include "skin/skinareawidget.h"

#include <QFile>
#include <QGuiApplication>
#include <gtest/gtest.h>

#include <memory>

namespace {

class VideoOutputTest : public EngineSuite
{
protected:
    static void SetUpTestSuite()
    {
        EngineSuite::SetUpTestSuite();
        media->video(QStringLiteral("clip.avi"), 1200);
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
        output = std::make_unique<VideoOutput>(main);
        output->addDevice(*device);
        output->title = [] { return QStringLiteral("clip — Velto"); };
        main.resize(200, 100);
        main.show();
    }

    void play()
    {
        device->setDeviceType(QStringLiteral("MPEGVideo"));
        device->setFileName(file("clip.avi"));
        device->open();
        device->play();
    }

    QWidget main;
    EventLog log;
    std::unique_ptr<MediaDevice> device;
    std::unique_ptr<VideoOutput> output;
};

TEST_F(VideoOutputTest, WithoutAVideoAreaAWindowOpensAndClosesWithTheItem)
{
    play();
    ASSERT_TRUE(waitFor([&] { return output->window(*device); })) << log.text.toStdString();
    QWidget *window = output->window(*device);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("clip — Velto"));
    EXPECT_EQ(window->size(), QSize(160, 120));

    ASSERT_TRUE(waitFor([&] { return log.ended == 1; }));
    EXPECT_EQ(output->window(*device), nullptr);
    EXPECT_EQ(output->view(*device), nullptr);
}

TEST_F(VideoOutputTest, TheSkinsVideoAreaTakesThePicturesAndGivesThemUpWithTheSkin)
{
    SkinAreaWidget box(2, &main);
    box.place(QRect(10, 10, 80, 60), QString(), true);
    box.show();
    output->setVideoBox(&box);
    play();
    ASSERT_TRUE(waitFor([&] { return output->view(*device); })) << log.text.toStdString();
    EXPECT_EQ(box.content(), output->view(*device));
    EXPECT_EQ(output->view(*device)->geometry(), QRect(0, 0, 80, 60));
    EXPECT_EQ(output->window(*device), nullptr);

    // A skin without the area: the playing video moves to its own window.
    output->setVideoBox(nullptr);
    EXPECT_EQ(box.content(), nullptr);
    ASSERT_NE(output->window(*device), nullptr);
    EXPECT_TRUE(output->window(*device)->isVisible());

    // Closing that window leaves the sound to play to its end.
    output->window(*device)->close();
    ASSERT_TRUE(waitFor([&] { return log.ended == 1; }));
    EXPECT_EQ(log.failed, 0);
}

} // namespace
