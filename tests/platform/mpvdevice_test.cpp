#include "mediatest.h"
#include "platform/linuxcddrive.h"
#include "support/deadline.h"
#include "support/discimage.h"
#include "support/oddfiles.h"
#include "support/printers.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>
#include <gtest/gtest.h>

namespace {

// A 1.5 s sine as WAV and MP3, and bytes that are no media at all.
class MpvDeviceTest : public EngineSuite
{
protected:
    static void SetUpTestSuite()
    {
        EngineSuite::SetUpTestSuite();
        media->sineWav(QStringLiteral("tone.wav"), 1500);
        media->encoded(QStringLiteral("tone.mp3"), 1500);
        media->garbage(QStringLiteral("garbage.mp3"));
        media->encoded(QStringLiteral("tagged.flac"), 1500,
                       {QStringLiteral("-metadata"), QStringLiteral("TITLE=Morning Tone"),
                        QStringLiteral("-metadata"), QStringLiteral("ARTIST=The Sines"),
                        QStringLiteral("-metadata"), QStringLiteral("ALBUM=Signals")});
    }

    void SetUp() override
    {
        if (!QFile::exists(file("tone.mp3")))
            GTEST_SKIP() << "ffmpeg could not make the test media";
        EngineSuite::SetUp();
    }
};

TEST_F(MpvDeviceTest, StopHoldsThePositionAndTheEndLeavesTheFileOpen)
{
    EventLog log;
    auto device = openDevice(log, "tone.wav");
    // A position reported while the device does not play is a stale answer taken.
    int reportsWhileHalted = 0;
    MediaDevice::Events events = log.events();
    events.positionChanged = [&, counted = events.positionChanged](qint64 ms) {
        counted(ms);
        reportsWhileHalted += device->mode() != MediaDevice::Mode::Playing;
    };
    device->setEvents(events);
    ASSERT_TRUE(waitFor([&] { return log.opened == 1; }));
    device->seek(300);
    device->play();
    ASSERT_TRUE(waitFor([&] { return device->position() >= 500; }));
    // A fresh answer (each read asks for one), so the run-on below starts well
    // inside its one-second cap.
    const qsizetype answers = log.reported.size();
    ASSERT_TRUE(waitFor([&] { return device->position() > 0 && log.reported.size() > answers; }));

    // Between mpv's answers the position runs on with the clock, no faster.
    // Answers come in only through the event loop: while it is held, the
    // run-on alone moves the position, by the time measured around it.
    QElapsedTimer outer;
    outer.start();
    const qint64 from = device->position();
    QElapsedTimer inner;
    inner.start();
    QThread::msleep(100);
    const qint64 innerMs = inner.elapsed();
    const qint64 to = device->position();
    const qint64 outerMs = outer.elapsed();
    ASSERT_LT(to, device->length());
    EXPECT_GE(to - from, innerMs - 1);
    EXPECT_LE(to - from, outerMs + 1);

    // The question those reads asked is still open when the device stops;
    // its answer comes in while the device stands.
    device->stop();
    const qint64 held = device->position();
    ASSERT_TRUE(waitBeats(100, 3));
    EXPECT_EQ(device->position(), held);
    EXPECT_EQ(reportsWhileHalted, 0);
    EXPECT_EQ(device->mode(), MediaDevice::Mode::Stopped);
    EXPECT_EQ(log.ended, 0);

    device->setFrom(1200);
    device->play();
    ASSERT_TRUE(waitFor([&] { return log.ended == 1; }, 10000));
    EXPECT_EQ(device->mode(), MediaDevice::Mode::Stopped);
    EXPECT_EQ(device->position(), device->length());
    device->seek(1200); // seek back at the end and it plays again
    device->play();
    ASSERT_TRUE(waitFor([&] { return log.ended == 2; }, 10000));
}

// A track of a disc opens only on the "cdaudio" device, and only when the disc
// has it; cd_e2e plays one through the window.
TEST_F(MpvDeviceTest, ReportsOpenFailuresWithTheDeviceNumbersAndMpvsText)
{
    DiscImage image;
    image.sectors = {60, 135};
    const CdDisc disc =
        LinuxCdDrive().read(image.write(media->file(QStringLiteral("disc")), "disc"));
    ASSERT_TRUE(disc.ok()) << disc.problem.toStdString();
    const auto track = [&](int t) { return QString::fromUtf8(cdTrackUrl(disc.playSource, t)); };
    const struct
    {
        QString file, type;
        int error;
        const char *text; // mpv's, where it speaks
    } cases[] = {
        {file("missing.mp3"), QStringLiteral("MPEGVideo"), 274, "loading failed"},
        {file("garbage.mp3"), QStringLiteral("ActiveMovie"), 277, "unrecognized file format"},
        {file("tone.mp3"), QStringLiteral("mpegvideo"), 263, "unknown device type"},
        {track(3), QStringLiteral("cdaudio"), 274, nullptr},
        {file("tone.wav"), QStringLiteral("cdaudio"), 263, nullptr},
        {track(1), QStringLiteral("MPEGVideo"), 274, nullptr},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.file.toStdString());
        EventLog log;
        auto device = openDevice(log, c.file, c.type);
        ASSERT_TRUE(waitFor([&] { return log.failed + log.opened > 0; }));
        EXPECT_EQ(log.failed, 1);
        EXPECT_EQ(log.error, c.error);
        EXPECT_EQ(device->errorNumber(), c.error);
        if (c.text) {
            EXPECT_EQ(device->errorText(), QString::fromLatin1(c.text));
        }
        EXPECT_EQ(device->mode(), MediaDevice::Mode::NotReady);

        // The same device opens a good track after a failure.
        device->setDeviceType(QStringLiteral("cdaudio"));
        device->setFileName(track(2));
        device->open();
        EXPECT_EQ(device->errorNumber(), 0);
        ASSERT_TRUE(waitFor([&] { return log.opened == 1; }));
        EXPECT_EQ(log.failed, 1);
        EXPECT_EQ(device->length(), 1800) << "135 sectors of 1/75 s";
    }
}

TEST_F(MpvDeviceTest, EachFileOpensWithItsLengthAndTagsAndAbandonedOpensStayQuiet)
{
    // mpv reports a length only when it differs from the last one it sent,
    // so the same file comes twice. Opens abandoned for another report nothing.
    EventLog log;
    auto device = openDevice(log, "garbage.mp3");
    device->close();
    device->setFileName(file("missing.mp3"));
    device->open();
    const MediaDevice::FileTags tagged{QStringLiteral("Morning Tone"), QStringLiteral("The Sines"),
                                       QStringLiteral("Signals")};
    const std::pair<const char *, MediaDevice::FileTags> files[] = {
        {"tone.wav", {}}, {"tagged.flac", tagged}, {"tone.mp3", {}}, {"tone.mp3", {}}};
    int round = 0;
    for (const auto &[name, tags] : files) {
        SCOPED_TRACE(name);
        device->setFileName(file(name));
        device->open();
        EXPECT_EQ(device->mode(), MediaDevice::Mode::NotReady) << "open returns before loading";
        ++round;
        ASSERT_TRUE(waitFor([&] { return log.opened == round; })) << log.text.toStdString();
        EXPECT_EQ(device->mode(), MediaDevice::Mode::Stopped);
        EXPECT_NEAR(device->length(), 1500, 60);
        EXPECT_EQ(device->fileTags(), tags) << device->fileTags().title.toStdString();
        device->close();
        EXPECT_EQ(device->fileTags(), MediaDevice::FileTags());
    }
    EXPECT_EQ(log.failed, 0) << log.text.toStdString();
}

TEST_F(MpvDeviceTest, DestroyingWhileLoadingPlayingOrInsideACallbackIsSafe)
{
    for (const char *when : {"loading", "playing", "in a callback"}) {
        SCOPED_TRACE(when);
        EventLog log;
        std::unique_ptr<MediaDevice> device = openDevice(log, "tone.wav");
        if (when[0] == 'i')
            device->setEvents({{}, {}, [&](qint64) { device.reset(); }, {}});
        if (when[0] != 'l') {
            device->play();
            // Reading the position makes the device learn a newer one.
            ASSERT_TRUE(waitFor([&] { return !device || device->position() > 100; }));
        }
        device.reset();
        // Whatever was queued for the destroyed device runs now, and must find it gone.
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

TEST_F(MpvDeviceTest, APipeOrDeviceNamedAsMediaNeverHoldsUpTheCaller)
{
    // mpv opens a file on its own thread and gives up when told to. The heads
    // of MIDI and FLI files the device reads itself, through openRegularFile.
    QTemporaryDir dir;
    const QList<OddFile> odd = makeOddFiles(dir.path(), QStringLiteral("song.mp3"));
    ASSERT_EQ(odd.size(), 3);
    for (const OddFile &f : odd) {
        const Deadline deadline("a " + f.kind.toStdString());
        EventLog log;
        auto device = openDevice(log, f.path);
        device->play();
        QCoreApplication::processEvents();
        device->close();
        device.reset();
    }
}

TEST(MediaDeviceFactory, WithoutTheModuleEveryOpenFailsAsNotInstalled)
{
    MediaDeviceFactory factory({QStringLiteral("/nonexistent/libvelto_mpv.so")});
    factory.preload();
    EXPECT_FALSE(factory.hasEngine());
    EXPECT_TRUE(factory.problem().contains(QStringLiteral("/nonexistent/libvelto_mpv.so")));
    auto device = factory.create();
    ASSERT_TRUE(device);
    EventLog log;
    device->setEvents(log.events());
    device->setDeviceType(QStringLiteral("MPEGVideo"));
    device->setFileName(QCoreApplication::applicationFilePath());
    device->open();
    EXPECT_EQ(log.failed, 0) << "failures are reported from the event loop";
    ASSERT_TRUE(waitFor([&] { return log.failed == 1; }));
    EXPECT_EQ(log.error, MediaDevice::DeviceNotInstalled);
    EXPECT_EQ(log.text, factory.problem());
}

} // namespace
