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
    const struct
    {
        QString type, file;
        int error;
    } cases[] = {
        {QStringLiteral("MPEGVideo"), dir.filePath(QStringLiteral("missing.mp3")), 274},
        {QStringLiteral("MPEGVideo"), QString(), 274},
        {QStringLiteral("ActiveMovie"), empty, 277},
        {QStringLiteral("cdaudio"), song, 263},
    };
    for (const auto &c : cases) {
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

TEST_F(NullMediaDeviceTest, OpensWithTheLengthGivenSeeksAndPlaysSilenceToTheEnd)
{
    openSong();
    EXPECT_EQ(device.length(), 300);
    EXPECT_EQ(device.errorNumber(), 0);
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped);
    const std::pair<qint64, qint64> seeks[] = {{-50, 0}, {301, 300}, {120, 120}};
    for (const auto &[target, expected] : seeks) {
        device.seek(target);
        EXPECT_EQ(device.position(), expected) << target;
    }
    device.play();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Playing);
    spin(60);
    device.stop();
    const qint64 held = device.position();
    EXPECT_GE(held, 150);
    spin(60);
    EXPECT_EQ(device.position(), held) << "stop holds the position";

    device.play();
    ASSERT_TRUE(waitFor([&] { return log.ended == 1; }, 2000));
    EXPECT_GT(log.positions, 0);
    EXPECT_EQ(device.position(), 300);
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped);
    device.play();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped) << "play at the end stays stopped";

    write(dir.filePath(QStringLiteral("other.wav")), "x");
    device.setFileName(dir.filePath(QStringLiteral("other.wav")));
    device.open();
    ASSERT_TRUE(waitFor([&] { return log.opened == 2; }));
    EXPECT_EQ(device.length(), 2000) << "the default length";

    // Play during opening starts once open; close forgets an open under way.
    device.setFileName(song);
    device.open();
    device.play();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::NotReady);
    ASSERT_TRUE(waitFor([&] { return device.mode() == MediaDevice::Mode::Playing; }));
    device.open();
    device.close();
    spin(50);
    EXPECT_EQ(log.opened, 3) << "a closed device never reports its abandoned open";
    EXPECT_EQ(device.mode(), MediaDevice::Mode::NotReady);
    EXPECT_EQ(device.length(), 0);
}

} // namespace
