#include "player/videooutput.h"
#include "skin/skinareawidget.h"
#include "videosuite.h"

#include <QImage>
#include <QPointer>
#include <QSet>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace {

// Colours of the test picture, or a single one for a black or empty view.
int coloursIn(QWidget &view)
{
    const QImage image = view.grab().toImage();
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 8)
        for (int x = 0; x < image.width(); x += 8)
            colours.insert(image.pixel(x, y) & 0xF0F0F0);
    return int(colours.size());
}

class VideoOutputTest : public VideoSuite
{
protected:
    void SetUp() override
    {
        VideoSuite::SetUp();
        if (!device)
            return;
        output = std::make_unique<VideoOutput>(main);
        output->addDevice(*device);
        main.resize(200, 100);
        main.show();
    }

    QWidget main;
    std::unique_ptr<VideoOutput> output;
};

TEST_F(VideoOutputTest, WithoutAVideoAreaAWindowShowsThePicturesAndClosesWithTheItem)
{
    play();
    ASSERT_TRUE(waitFor([&] { return output->window(*device); })) << log.text.toStdString();
    QWidget *window = output->window(*device);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->size(), QSize(160, 120));
    const QPointer<QWidget> view = output->view(*device);
    ASSERT_TRUE(waitFor([&] { return device->position() >= 500; }));
    ASSERT_TRUE(view);
    EXPECT_GT(coloursIn(*view), 4) << "the view stays black";
    QTest::mouseDClick(view, Qt::LeftButton);
    EXPECT_TRUE(window->isFullScreen()) << "a double-click on the picture fills the screen";
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(window->isFullScreen());

    ASSERT_TRUE(waitFor([&] { return log.ended == 1; }));
    EXPECT_EQ(output->window(*device), nullptr);
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
