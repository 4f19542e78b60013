#include "fliwriter.h"
#include "mediatest.h"
#include "midiwriter.h"
#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

namespace {

// MIDI through FluidSynth, FLI lengths and the output gains, on the real
// media engine with silent output. All media are made here.
class MpvSoundTest : public EngineSuite
{
protected:
    static void SetUpTestSuite()
    {
        EngineSuite::SetUpTestSuite();
        const QByteArray tune = MidiWriter::tune(1500);
        media->write(QStringLiteral("tune.mid"), tune);
        media->write(QStringLiteral("tune.RMI"), MidiWriter::rmid(tune));
        QByteArray noDivision = tune;
        noDivision[12] = noDivision[13] = 0;
        media->write(QStringLiteral("broken.mid"), noDivision);
        media->write(QStringLiteral("anim.fli"), makeFlic(false, 20, 7)); // 2 s at 10 frames/s
        media->sineWav(QStringLiteral("mono.wav"), 3000);
    }
};

TEST_F(MpvSoundTest, MidiAndFliPlayWithTheLengthsTheirFilesGive)
{
    EventLog log;
    auto device = openDevice(log, "tune.RMI");
    ASSERT_TRUE(waitFor([&] { return log.opened + log.failed > 0; }));
    ASSERT_EQ(log.opened, 1) << log.text.toStdString();
    EXPECT_NEAR(device->length(), 1500, 2);
    device->play();
    ASSERT_TRUE(waitFor([&] { return device->position() > 300; }));
    // From the seek to the end, no answer about the time before it takes the
    // position back.
    device->seek(1100);
    const qsizetype sinceSeek = log.reported.size();
    qint64 lowest = device->length();
    ASSERT_TRUE(waitFor(
        [&] {
            lowest = qMin(lowest, device->position());
            return log.ended == 1;
        },
        10000));
    EXPECT_GE(lowest, 1100);
    for (qsizetype i = sinceSeek; i < log.reported.size(); ++i)
        EXPECT_GE(log.reported[i], 1100) << "report " << i;
    EXPECT_EQ(device->position(), device->length());

    device->setFileName(file("anim.fli"));
    device->open();
    ASSERT_TRUE(waitFor([&] { return log.opened + log.failed > 1; }));
    ASSERT_EQ(log.opened, 2) << log.text.toStdString();
    EXPECT_EQ(device->length(), 2000);
    device->play();
    // mpv's own estimate comes, if at all, while the file plays: to its end
    // the header's length stands.
    QSet<qint64> lengths;
    ASSERT_TRUE(waitFor(
        [&] {
            lengths << device->length();
            return log.ended == 2;
        },
        10000));
    EXPECT_EQ(lengths, QSet<qint64>{2000});
}

TEST_F(MpvSoundTest, MidiThatCannotPlaySaysWhy)
{
    EventLog broken;
    auto device = openDevice(broken, "broken.mid");
    ASSERT_TRUE(waitFor([&] { return broken.opened + broken.failed > 0; }));
    EXPECT_EQ(broken.failed, 1);
    EXPECT_EQ(broken.error, MediaDevice::UnknownFormat) << broken.text.toStdString();

    qputenv("VELTO_SOUNDFONT", "/nonexistent/bank.sf2");
    EventLog log;
    device = openDevice(log, "tune.mid");
    ASSERT_TRUE(waitFor([&] { return log.failed + log.opened > 0; }));
    qunsetenv("VELTO_SOUNDFONT");
    EXPECT_EQ(log.error, MediaDevice::DeviceNotInstalled);
    EXPECT_EQ(log.text, QStringLiteral("no General MIDI sound bank is installed "
                                       "(install timgm6mb-soundfont or fluid-soundfont-gm)"));
}

// The level of each channel of a WAV (16-bit or float samples, as mpv
// writes them) as root mean square of full scale; a mono file has the same
// level on both.
std::pair<double, double> channelLevels(const QByteArray &wav)
{
    const qsizetype format = wav.indexOf("fmt ");
    const qsizetype data = wav.indexOf("data");
    if (format < 0 || data < 0)
        return {-1, -1};
    const int channels = qMax(1, int(uchar(wav[format + 10])));
    const int bytes = uchar(wav[format + 22]) / 8;
    const char *at = wav.constData() + data + 8;
    const qsizetype frames = (wav.size() - data - 8) / (bytes * channels);
    auto sample = [&](qsizetype i) {
        float f = 0;
        qint16 v = 0;
        bytes == 4 ? std::memcpy(&f, at + 4 * i, 4) : std::memcpy(&v, at + 2 * i, 2);
        return bytes == 4 ? double(f) : v / 32768.0;
    };
    double left = 0, right = 0;
    for (qsizetype i = 0; i < frames; ++i) {
        left += std::pow(sample(channels * i), 2);
        right += std::pow(sample(channels * i + channels - 1), 2);
    }
    const double n = double(qMax<qsizetype>(frames, 1));
    return {std::sqrt(left / n), std::sqrt(right / n)};
}

TEST_F(MpvSoundTest, GainsScaleEachChannelOfMonoAndStereoSound)
{
    // mpv writes what it would play into audiodump.wav in the current folder.
    QTemporaryDir out;
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(out.path()));
    qputenv("VELTO_AUDIO", "pcm");
    MediaDeviceFactory pcm;
    const struct
    {
        const char *file;
        double left, right;
    } cases[] = {{"mono.wav", 1, 0.25}, {"tune.mid", 0.2, 1}};
    std::pair<double, double> full{};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.file);
        for (bool reference : {true, false}) {
            EventLog log;
            auto device = openDevice(log, c.file, QStringLiteral("MPEGVideo"), pcm);
            if (!reference)
                device->setGains(c.left, c.right);
            device->play();
            ASSERT_TRUE(waitFor([&] { return log.ended + log.failed > 0; }, 10000));
            device.reset(); // closes audiodump.wav
            QFile wav(out.filePath(QStringLiteral("audiodump.wav")));
            ASSERT_TRUE(wav.open(QIODevice::ReadOnly));
            const auto levels = channelLevels(wav.readAll());
            if (reference) {
                full = levels;
                ASSERT_GT(full.first, 0.01);
                ASSERT_GT(full.second, 0.01);
                continue;
            }
            EXPECT_NEAR(levels.first / full.first, c.left, 0.02);
            EXPECT_NEAR(levels.second / full.second, c.right, 0.02);
        }
    }
    qputenv("VELTO_AUDIO", "null");
    QDir::setCurrent(before);
}

} // namespace
