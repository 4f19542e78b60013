#include "mediatest.h"
#include "platform/nullmediadevice.h"
#include "support/printers.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

// Refusals are left to the engine's tests: without the module this device
// only ever refuses everything, which the factory's test covers.
TEST(NullMediaDevice, OpensWithTheLengthGivenSeeksAndPlaysSilenceToTheEnd)
{
    TestMedia media;
    const QString song = media.write(QStringLiteral("song.mp3"), "not decoded, only there");
    const QString other = media.write(QStringLiteral("other.wav"), "x");
    EventLog log;
    NullMediaDevice device{2000};
    device.setLengthFor(song, 300);
    device.setEvents(log.events());
    device.setDeviceType(QStringLiteral("MPEGVideo"));
    device.setFileName(song);
    device.open();
    ASSERT_TRUE(waitFor([&] { return log.opened == 1; }));
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
    ASSERT_TRUE(waitFor([&] { return device.position() >= 150; }));
    device.stop();
    const qint64 held = device.position();
    const int reports = log.positions;
    // Beats of the device's own tick: one left running would have reported.
    ASSERT_TRUE(waitBeats(50, 2));
    EXPECT_EQ(device.position(), held) << "stop holds the position";
    EXPECT_EQ(log.positions, reports);

    device.play();
    ASSERT_TRUE(waitFor([&] { return log.ended == 1; }, 10000));
    EXPECT_GT(log.positions, 0);
    EXPECT_EQ(device.position(), 300);
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped);
    device.play();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped) << "play at the end stays stopped";

    device.setFileName(other);
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
    // The open reports from the event loop: what it queued runs now.
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log.opened, 3) << "a closed device never reports its abandoned open";
    EXPECT_EQ(device.mode(), MediaDevice::Mode::NotReady);
    EXPECT_EQ(device.length(), 0);
}

} // namespace
