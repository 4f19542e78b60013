#include "support/printers.h"
#include "videosuite.h"

#include <QImage>
#include <QSet>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>

namespace {

struct VideoLog
{
    int started = 0;
    int stopped = 0;
    QSize size;

    MediaDevice::VideoEvents events()
    {
        return {[this](QSize s) {
                    ++started;
                    size = s;
                },
                [this] { ++stopped; }};
    }
};

class MpvVideo : public VideoSuite
{
protected:
    void SetUp() override
    {
        VideoSuite::SetUp();
        if (device)
            device->setVideoEvents(video.events());
    }

    // Colours of the test picture, or a single one for a black or empty view.
    static int coloursIn(QWidget &view)
    {
        const QImage image = view.grab().toImage();
        QSet<QRgb> colours;
        for (int y = 0; y < image.height(); y += 8)
            for (int x = 0; x < image.width(); x += 8)
                colours.insert(image.pixel(x, y) & 0xF0F0F0);
        return int(colours.size());
    }

    VideoLog video;
};

TEST_F(MpvVideo, PicturesAreAnnouncedShownAndEndWithTheirItem)
{
    play("clip.avi");
    ASSERT_TRUE(waitLong([&] { return video.started == 1; })) << log.text.toStdString();
    EXPECT_EQ(video.size, QSize(160, 120));
    EXPECT_EQ(device->videoSize(), QSize(160, 120));

    std::unique_ptr<QWidget> view(device->createVideoView(nullptr));
    ASSERT_TRUE(view);
    view->resize(160, 120);
    view->show();
    ASSERT_TRUE(waitLong([&] { return device->position() >= 500; }));
    EXPECT_GT(coloursIn(*view), 4) << "the view stays black";

    ASSERT_TRUE(waitLong([&] { return log.ended == 1; }));
    EXPECT_EQ(video.stopped, 1);
    EXPECT_TRUE(device->videoSize().isEmpty());

    // Sound alone announces nothing, with the view still there.
    play("tone.mp3");
    ASSERT_TRUE(waitLong([&] { return log.ended == 2; })) << log.text.toStdString();
    EXPECT_EQ(video.started, 1);
}

TEST_F(MpvVideo, ClosingTheViewLeavesThePlayingItemToTheEnd)
{
    play("clip.avi");
    ASSERT_TRUE(waitLong([&] { return video.started == 1; })) << log.text.toStdString();
    std::unique_ptr<QWidget> view(device->createVideoView(nullptr));
    ASSERT_TRUE(view);
    view->show();
    ASSERT_TRUE(waitLong([&] { return device->position() >= 300; }));
    view.reset();

    const qint64 before = device->position();
    ASSERT_TRUE(waitLong([&] { return log.ended == 1; }));
    EXPECT_GT(device->position(), before);
    EXPECT_EQ(log.failed, 0);

    // A new view takes the pictures of the next item.
    play("clip.avi");
    ASSERT_TRUE(waitLong([&] { return video.started == 2; }));
    view.reset(device->createVideoView(nullptr));
    ASSERT_TRUE(view);
    view->resize(160, 120);
    view->show();
    ASSERT_TRUE(waitLong([&] { return device->position() >= 500; }));
    EXPECT_GT(coloursIn(*view), 4);
}

} // namespace
