#include "mediatest.h"
#include "platform/nullmediadevice.h"
#include "support/printers.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

// Refusals are left to the engine's tests: without the module this device
// only ever refuses everything, which the factory's test covers.
TEST(NullMediaDevice, OpensWithItsLengthPlaysSilenceToTheEndAndForgetsAnAbandonedOpen)
{
    TestMedia media;
    const QString song = media.write(QStringLiteral("song.mp3"), "not decoded, only there");
    EventLog log;
    NullMediaDevice device{300};
    device.setEvents(log.events());
    device.setDeviceType(QStringLiteral("MPEGVideo"));
    device.setFileName(song);
    device.open();
    ASSERT_TRUE(waitFor([&] { return log.opened == 1; }));
    EXPECT_EQ(device.length(), 300);
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped);
    device.seek(120);
    device.play();
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
    EXPECT_EQ(device.position(), 300);
    EXPECT_EQ(device.mode(), MediaDevice::Mode::Stopped);

    // Play during opening starts once open, as the engine asks; close forgets
    // an open under way.
    device.open();
    device.play();
    EXPECT_EQ(device.mode(), MediaDevice::Mode::NotReady);
    ASSERT_TRUE(waitFor([&] { return device.mode() == MediaDevice::Mode::Playing; }));
    device.open();
    device.close();
    // The open reports from the event loop: what it queued runs now.
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(log.opened, 2) << "a closed device never reports its abandoned open";
    EXPECT_EQ(device.mode(), MediaDevice::Mode::NotReady);
}

} // namespace
