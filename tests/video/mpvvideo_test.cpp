#include "support/printers.h"
#include "videosuite.h"

#include <QImage>
#include <QSet>
#include <QWidget>
#include <gtest/gtest.h>

#include <memory>

namespace {

class MpvVideo : public VideoSuite
{
protected:
    static void SetUpTestSuite()
    {
        VideoSuite::SetUpTestSuite();
        media->encoded(QStringLiteral("cover.mp3"), 800,
                       {"-f", "lavfi", "-i", "color=c=red:size=32x32:duration=0.04", "-map", "0:a",
                        "-map", "1:v", "-c:v", "mjpeg", "-disposition:v", "attached_pic"});
    }

    void SetUp() override
    {
        VideoSuite::SetUp();
        if (device)
            device->setVideoEvents(
                {[this](QSize s) { ++started, size = s; }, [this] { ++stopped; }});
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

    int started = 0, stopped = 0;
    QSize size;
};

TEST_F(MpvVideo, PicturesAreAnnouncedShownInEachNewViewAndEndWithTheirItem)
{
    for (int item = 1; item <= 2; ++item) {
        SCOPED_TRACE(item);
        play("clip.avi");
        ASSERT_TRUE(waitFor([&] { return started == item; })) << log.text.toStdString();
        EXPECT_EQ(std::pair(size, device->videoSize()),
                  std::pair(QSize(160, 120), QSize(160, 120)));
        std::unique_ptr<QWidget> view(device->createVideoView(nullptr));
        ASSERT_TRUE(view);
        view->resize(160, 120);
        view->show();
        ASSERT_TRUE(waitFor([&] { return device->position() >= 500; }));
        EXPECT_GT(coloursIn(*view), 4) << "the view stays black";
        view.reset(); // the item plays on to its end
        ASSERT_TRUE(waitFor([&] { return log.ended == item; }));
    }
    EXPECT_EQ(stopped, 2);
    EXPECT_TRUE(device->videoSize().isEmpty());
    EXPECT_EQ(log.failed, 0);
}

// The picture output costs memory and a thread: sound alone, a cover
// included, never sets it up. The first file with pictures does, and it
// stays for every file after (mpv must not have it replaced mid-play).
TEST_F(MpvVideo, OnlyAFileWithPicturesSetsUpThePictureOutput)
{
    const struct
    {
        const char *file;
        bool output;
    } items[] = {{"tone.mp3", false}, {"cover.mp3", false}, {"clip.avi", true}, {"tone.mp3", true}};
    int opened = 0;
    for (const auto &item : items) {
        SCOPED_TRACE(item.file);
        play(item.file);
        ++opened;
        ASSERT_TRUE(waitFor([&] { return log.opened == opened; })) << log.text.toStdString();
        const std::unique_ptr<QWidget> view(device->createVideoView(nullptr));
        EXPECT_EQ(view != nullptr, item.output);
    }
    EXPECT_EQ(log.failed, 0);
}

} // namespace
