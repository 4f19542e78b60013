#include "mediatest.h"
#include "platform/nullmediadevice.h"
#include "support/printers.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

class NullMediaDeviceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir.isValid());
        write(song, "not decoded, only there");
        write(empty, "");
        device.setLengthFor(song, 300);
        device.setEvents(log.events());
        device.setDeviceType(QStringLiteral("MPEGVideo"));
    }
    void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void openSong()
    {
        device.setFileName(song);
        device.open();
        ASSERT_TRUE(waitFor([&] { return log.opened == 1; }));
    }

    QTemporaryDir dir;
    QString song = dir.filePath(QStringLiteral("song.mp3"));
    QString empty = dir.filePath(QStringLiteral("empty.wav"));
    EventLog log;
    NullMediaDevice device{2000};
};

TEST_F(NullMediaDeviceTest, RefusesWhatARealDeviceWouldRefuse)
{
    struct Case
    {
        QString type;
        QString file;
        int error;
    };
    const Case cases[] = {
        {QStringLiteral("MPEGVideo"), dir.filePath(QStringLiteral("missing.mp3")), 274},
        {QStringLiteral("MPEGVideo"), QString(), 274},
        {QStringLiteral("ActiveMovie"), empty, 277},
        {QStringLiteral("mpegvideo"), song, 263},
        {QStringLiteral("cdaudio"), song, 263},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE((c.type + QLatin1Char(' ') + c.file).toStdString());
        log = {};
        device.setDeviceType(c.type);
        device.setFileName(c.file);
        device.open();
        EXPECT_EQ(log.failed, 0) << "failures are reported from the event loop";
        ASSERT_TRUE(waitFor([&] { return log.failed == 1; }));
        EXPECT_EQ(device.errorNumber(), c.error);
        EXPECT_EQ(log.error, c.error);
        EXPECT_FALSE(device.errorText().isEmpty());
        EXPECT_EQ(device.mode(), MediaDevice::Mode::NotReady);
        EXPECT_EQ(log.opened, 0);
    }
}

TEST_F(NullMediaDeviceTest, OpensWithTheLengthGivenForTheFile)
{
    openSong();
    EXPECT_EQ(device.length(), 300);
    EXPECT_EQ(device.errorNumber(), 0);
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped);

    write(dir.filePath(QStringLiteral("other.wav")), "x");
    device.setFileName(dir.filePath(QStringLiteral("other.wav")));
    device.open();
    ASSERT_TRUE(waitFor([&] { return log.opened == 2; }));
    EXPECT_EQ(device.length(), 2000);
}

TEST_F(NullMediaDeviceTest, PlaysSilenceToTheEndAndStops)
{
    openSong();
    device.play();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Playing);
    ASSERT_TRUE(waitFor([&] { return log.ended == 1; }, 2000));
    EXPECT_GT(log.positions, 0);
    EXPECT_EQ(device.position(), 300);
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped);
    device.play();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped) << "play at the end stays stopped";
}

TEST_F(NullMediaDeviceTest, SeeksWithinTheFileAndHoldsWhenStopped)
{
    openSong();
    const std::pair<qint64, qint64> seeks[] = {{-50, 0}, {120, 120}, {301, 300}, {99999, 300}};
    for (const auto &[target, expected] : seeks) {
        device.seek(target);
        EXPECT_EQ(device.position(), expected) << target;
    }
    device.setFrom(100);
    device.play();
    spin(60);
    device.stop();
    const qint64 held = device.position();
    EXPECT_GE(held, 150);
    spin(60);
    EXPECT_EQ(device.position(), held);
    device.pause();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Paused);
    device.resume();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Playing);
}

TEST_F(NullMediaDeviceTest, PlayDuringOpeningStartsOnceOpenAndCloseForgetsIt)
{
    device.setFileName(song);
    device.open();
    device.play();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::NotReady);
    ASSERT_TRUE(waitFor([&] { return device.mode() == MediaDevice::Mode::Playing; }));

    device.open();
    device.close();
    spin(50);
    EXPECT_EQ(log.opened, 1) << "a closed device never reports its abandoned open";
    EXPECT_EQ(device.mode(), MediaDevice::Mode::NotReady);
    EXPECT_EQ(device.length(), 0);
}

} // namespace
