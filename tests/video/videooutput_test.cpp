#include "app/videooutput.h"
#include "platform/mediadevicefactory.h"
#include "platform/mediatest.h"
#include "skin/skinareawidget.h"
#include "support/testmedia.h"

#include <QFile>
#include <gtest/gtest.h>

#include <memory>

namespace {

class VideoOutputTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("VELTO_AUDIO", "null");
        media = new TestMedia;
        factory = new MediaDeviceFactory;
        media->video(QStringLiteral("clip.avi"), 1200);
    }
    static void TearDownTestSuite()
    {
        delete factory;
        delete media;
    }

    void SetUp() override
    {
        if (!QFile::exists(media->file(QStringLiteral("clip.avi"))))
            GTEST_SKIP() << "ffmpeg could not make the test media";
        ASSERT_TRUE(factory->hasEngine()) << factory->problem().toStdString();
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
        device->setFileName(media->file(QStringLiteral("clip.avi")));
        device->open();
        device->play();
    }

    static TestMedia *media;
    static MediaDeviceFactory *factory;
    QWidget main;
    EventLog log;
    std::unique_ptr<MediaDevice> device;
    std::unique_ptr<VideoOutput> output;
};

TestMedia *VideoOutputTest::media = nullptr;
MediaDeviceFactory *VideoOutputTest::factory = nullptr;

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
