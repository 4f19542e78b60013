#include "mediatest.h"
#include "platform/mediadevicefactory.h"
#include "support/printers.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

namespace {

// Media made here with ffmpeg: a 1.5 s sine as WAV and MP3, and bytes that
// are no media at all.
class MpvDeviceTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("VELTO_AUDIO", "null");
        media = new QTemporaryDir;
        factory = new MediaDeviceFactory;
        for (const char *name : {"tone.wav", "tone.mp3", "tone.flac", "tone.ogg"}) {
            QProcess ffmpeg;
            ffmpeg.start(QStringLiteral("ffmpeg"),
                         {QStringLiteral("-loglevel"), QStringLiteral("error"),
                          QStringLiteral("-y"), QStringLiteral("-f"), QStringLiteral("lavfi"),
                          QStringLiteral("-i"), QStringLiteral("sine=frequency=440:duration=1.5"),
                          QStringLiteral("-ac"), QStringLiteral("1"), file(name)});
            ffmpeg.waitForFinished(20000);
        }
        QFile garbage(file("garbage.mp3"));
        if (garbage.open(QIODevice::WriteOnly)) {
            QRandomGenerator random(7);
            QByteArray bytes(64 * 1024, Qt::Uninitialized);
            random.fillRange(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4);
            garbage.write(bytes);
        }
    }
    static void TearDownTestSuite()
    {
        delete factory;
        delete media;
    }
    static QString file(const char *name) { return media->filePath(QString::fromLatin1(name)); }

    void SetUp() override
    {
        if (!QFile::exists(file("tone.mp3")))
            GTEST_SKIP() << "ffmpeg could not make the test media";
        ASSERT_TRUE(factory->hasEngine()) << factory->problem().toStdString();
    }

    std::unique_ptr<MediaDevice> openDevice(EventLog &log, const char *name,
                                            const QString &type = QStringLiteral("MPEGVideo"))
    {
        auto device = factory->create();
        device->setEvents(log.events());
        device->setDeviceType(type);
        device->setFileName(file(name));
        device->open();
        return device;
    }

    static QTemporaryDir *media;
    static MediaDeviceFactory *factory;
};

QTemporaryDir *MpvDeviceTest::media = nullptr;
MediaDeviceFactory *MpvDeviceTest::factory = nullptr;

TEST_F(MpvDeviceTest, OpensGeneratedMediaWithItsLength)
{
    for (const char *name : {"tone.wav", "tone.mp3"}) {
        SCOPED_TRACE(name);
        EventLog log;
        auto device = openDevice(log, name);
        EXPECT_EQ(device->mode(), MediaDevice::Mode::NotReady) << "open returns before loading";
        ASSERT_TRUE(waitFor([&] { return log.opened + log.failed > 0; }));
        ASSERT_EQ(log.opened, 1) << log.text.toStdString();
        EXPECT_NEAR(device->length(), 1500, 60);
        EXPECT_EQ(device->position(), 0);
        EXPECT_EQ(device->mode(), MediaDevice::Mode::Stopped);
        EXPECT_EQ(device->errorNumber(), 0);
    }
}

TEST_F(MpvDeviceTest, PlaysInRealTimeToTheEndAndReportsIt)
{
    EventLog log;
    auto device = openDevice(log, "tone.mp3");
    device->setFrom(700);
    device->play();
    EXPECT_TRUE(waitFor([&] { return device->mode() == MediaDevice::Mode::Playing; }));
    ASSERT_TRUE(waitFor([&] { return device->position() > 900; }));
    EXPECT_GT(log.positions, 0);
    EXPECT_EQ(log.ended, 0);
    ASSERT_TRUE(waitFor([&] { return log.ended == 1; }, 2000));
    EXPECT_EQ(device->mode(), MediaDevice::Mode::Stopped);
    EXPECT_EQ(device->position(), device->length());

    // The file stays open at its end: seek back and it plays again.
    device->seek(1200);
    device->play();
    ASSERT_TRUE(waitFor([&] { return log.ended == 2; }, 2000));
}

TEST_F(MpvDeviceTest, SeekStaysInsideTheFileAndStopHoldsThePosition)
{
    EventLog log;
    auto device = openDevice(log, "tone.wav");
    ASSERT_TRUE(waitFor([&] { return log.opened == 1; }));
    const qint64 length = device->length();
    const std::pair<qint64, qint64> seeks[] = {
        {-500, 0}, {800, 800}, {length + 5000, length}, {300, 300}};
    for (const auto &[target, expected] : seeks) {
        device->seek(target);
        EXPECT_EQ(device->position(), expected) << "at once, seeking to " << target;
        spin(80);
        EXPECT_NEAR(device->position(), expected, 30) << "after mpv seeked to " << target;
    }
    device->play();
    ASSERT_TRUE(waitFor([&] { return device->position() >= 500; }));
    device->stop();
    spin(100);
    const qint64 held = device->position();
    spin(200);
    EXPECT_EQ(device->position(), held);
    EXPECT_EQ(device->mode(), MediaDevice::Mode::Stopped);
    EXPECT_EQ(log.ended, 0);
}

TEST_F(MpvDeviceTest, TwoDevicesPlayAtOnce)
{
    EventLog firstLog, secondLog;
    auto first = openDevice(firstLog, "tone.mp3");
    auto second = openDevice(secondLog, "tone.wav");
    first->play();
    second->play();
    ASSERT_TRUE(waitFor([&] { return first->position() > 400 && second->position() > 400; }));
    EXPECT_EQ(first->mode(), MediaDevice::Mode::Playing);
    EXPECT_EQ(second->mode(), MediaDevice::Mode::Playing);
}

TEST_F(MpvDeviceTest, ReportsOpenFailuresWithTheClassicNumbersAndMpvsText)
{
    struct Case
    {
        const char *file;
        QString type;
        int error;
        QString text;
    };
    const Case cases[] = {
        {"missing.mp3", QStringLiteral("MPEGVideo"), 274, QStringLiteral("loading failed")},
        {"garbage.mp3", QStringLiteral("ActiveMovie"), 277,
         QStringLiteral("unrecognized file format")},
        {"tone.mp3", QStringLiteral("Sequencer"), 263, QStringLiteral("unknown device type")},
        {"tone.mp3", QStringLiteral("mpegvideo"), 263, QStringLiteral("unknown device type")},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.file);
        EventLog log;
        auto device = openDevice(log, c.file, c.type);
        ASSERT_TRUE(waitFor([&] { return log.failed + log.opened > 0; }));
        EXPECT_EQ(log.failed, 1);
        EXPECT_EQ(log.error, c.error);
        EXPECT_EQ(device->errorNumber(), c.error);
        EXPECT_EQ(device->errorText(), c.text);
        EXPECT_EQ(device->mode(), MediaDevice::Mode::NotReady);
        EXPECT_EQ(device->length(), 0);

        // The same device opens a good file after a failure.
        device->setDeviceType(QStringLiteral("MPEGVideo"));
        device->setFileName(file("tone.wav"));
        device->open();
        EXPECT_EQ(device->errorNumber(), 0);
        ASSERT_TRUE(waitFor([&] { return log.opened == 1; }));
        EXPECT_EQ(log.failed, 1);
    }
}

TEST_F(MpvDeviceTest, ReopeningAbandonsTheEarlierFileQuietly)
{
    EventLog log;
    auto device = openDevice(log, "garbage.mp3");
    device->close();
    device->setFileName(file("missing.mp3"));
    device->open();
    device->setFileName(file("tone.wav"));
    device->open();
    device->play();
    ASSERT_TRUE(waitFor([&] { return device->position() > 200; }));
    spin(100);
    EXPECT_EQ(log.failed, 0) << log.text.toStdString();
    EXPECT_EQ(log.opened, 1);
    EXPECT_EQ(device->fileName(), file("tone.wav"));
}

TEST_F(MpvDeviceTest, EachFileOpensWithItsLengthEvenWhenTheLastWasAsLong)
{
    // mpv reports a length only when it differs from the last one it sent.
    EventLog log;
    auto device = openDevice(log, "tone.flac");
    for (int round = 1; round <= 8; ++round) {
        SCOPED_TRACE(round);
        device->play();
        ASSERT_TRUE(waitFor([&] { return log.opened == round; }));
        EXPECT_EQ(device->length(), 1500);
        ASSERT_TRUE(waitFor([&] { return device->position() > 0; }));
        device->seek(0);
        device->stop();
        device->close();
        device->setFileName(file(round % 2 ? "tone.ogg" : "tone.flac"));
        device->open();
    }
}

TEST_F(MpvDeviceTest, DestroyingWhileLoadingPlayingOrInsideACallbackIsSafe)
{
    {
        EventLog log;
        auto loading = openDevice(log, "tone.mp3");
    }
    {
        EventLog log;
        auto playing = openDevice(log, "tone.mp3");
        playing->play();
        ASSERT_TRUE(waitFor([&] { return playing->position() > 100; }));
    }
    std::unique_ptr<MediaDevice> device = factory->create();
    device->setEvents({{}, {}, [&](qint64) { device.reset(); }, {}});
    device->setDeviceType(QStringLiteral("MPEGVideo"));
    device->setFileName(file("tone.wav"));
    device->open();
    device->play();
    EXPECT_TRUE(waitFor([&] { return !device; }));
    spin(50);
}

TEST(MediaDeviceFactory, FallsBackToSilenceWithoutTheModule)
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
    EXPECT_TRUE(waitFor([&] { return log.opened == 1; }));
}

TEST(MediaDeviceFactory, ProgramsLinkingThePlatformDoNotLinkLibmpv)
{
    // Start-up pays for libmpv only once the module is loaded.
    QProcess ldd;
    ldd.start(QStringLiteral("ldd"), {QCoreApplication::applicationFilePath()});
    ASSERT_TRUE(ldd.waitForFinished(10000));
    const QByteArray libraries = ldd.readAllStandardOutput();
    EXPECT_TRUE(libraries.contains("libQt6Core")) << libraries.toStdString();
    EXPECT_FALSE(libraries.contains("libmpv")) << libraries.toStdString();
}

} // namespace
