#include "support/printers.h"
#include "videosuite.h"

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
};

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
