#include "platform/tuner.h"

#include "support/printers.h"
#include "support/temphome.h"

#include <QFile>
#include <gtest/gtest.h>

#include <sys/stat.h>

// No machine here has a radio card: what can be checked is that anything else
// under the device's name gives a quiet tuner that says what is wrong, and
// that nothing blocks on the way.
TEST(RadioDevice, AnythingButARadioGivesAQuietTunerThatSaysWhy)
{
    TempHome home;
    const QString fifo = home.file(QStringLiteral("fifo"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const struct
    {
        QString path;
        QString problem;
    } cases[] = {
        {home.file(QStringLiteral("missing")),
         QStringLiteral("There is no radio device %1.").arg(home.file(QStringLiteral("missing")))},
        {fifo, QStringLiteral("%1 is not a radio device.").arg(fifo)}, // never waits for a writer
        {QStringLiteral("/dev/null"), QStringLiteral("/dev/null is not a radio receiver.")},
    };
    for (const auto &c : cases) {
        std::unique_ptr<Tuner> tuner = openRadioDevice(c.path);
        ASSERT_TRUE(tuner);
        EXPECT_EQ(tuner->problem(), c.problem) << c.path.toStdString();
        tuner->set_frequency(101500000);
        tuner->radio_on();
        EXPECT_EQ(tuner->signal_detect(), 0);
        EXPECT_EQ(tuner->stereo_detect(), 0);
        EXPECT_EQ(tuner->get_volume(), 0);
    }
}
