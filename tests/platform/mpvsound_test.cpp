#include "fliwriter.h"
#include "mediatest.h"
#include "midiwriter.h"
#include "platform/mediadevicefactory.h"
#include "support/printers.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <iterator>
#include <memory>

namespace {

// MIDI through FluidSynth, FLI lengths and the output gains, on the real
// media engine with silent output. All media are made here.
class MpvSoundTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("VELTO_AUDIO", "null");
        media = new QTemporaryDir;
        factory = new MediaDeviceFactory;
        const QByteArray tune = MidiWriter::tune(1500);
        write("tune.mid", tune);
        write("tune.RMI", MidiWriter::rmid(tune));
        write("long.mid", MidiWriter::tune(4000));
        QByteArray noDivision = tune;
        noDivision[12] = noDivision[13] = 0;
        write("broken.mid", noDivision);
        QByteArray noise(8192, Qt::Uninitialized);
        QRandomGenerator random(5);
        for (char &c : noise)
            c = char(random.bounded(256));
        write("noise.mid", noise);
        write("anim.fli", makeFlic(false, 20, 7)); // 2 s at 10 frames a second
        QProcess ffmpeg;
        ffmpeg.start(QStringLiteral("ffmpeg"),
                     {QStringLiteral("-loglevel"), QStringLiteral("error"), QStringLiteral("-y"),
                      QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                      QStringLiteral("sine=frequency=440:duration=3"), QStringLiteral("-ac"),
                      QStringLiteral("1"), file("mono.wav")});
        ffmpeg.waitForFinished(20000);
    }
    static void TearDownTestSuite()
    {
        delete factory;
        delete media;
    }
    static QString file(const char *name) { return media->filePath(QString::fromLatin1(name)); }
    static void write(const char *name, const QByteArray &bytes)
    {
        QFile out(file(name));
        if (out.open(QIODevice::WriteOnly))
            out.write(bytes);
    }

    void SetUp() override { ASSERT_TRUE(factory->hasEngine()) << factory->problem().toStdString(); }

    std::unique_ptr<MediaDevice> openDevice(EventLog &log, const char *name,
                                            MediaDeviceFactory &from = *factory)
    {
        auto device = from.create();
        device->setEvents(log.events());
        device->setDeviceType(QStringLiteral("MPEGVideo"));
        device->setFileName(file(name));
        device->open();
        return device;
    }

    static QTemporaryDir *media;
    static MediaDeviceFactory *factory;
};

QTemporaryDir *MpvSoundTest::media = nullptr;
MediaDeviceFactory *MpvSoundTest::factory = nullptr;

TEST_F(MpvSoundTest, MidiPlaysWithTheLengthOfItsTicksAndSeeks)
{
    for (const char *name : {"tune.mid", "tune.RMI"}) {
        SCOPED_TRACE(name);
        EventLog log;
        auto device = openDevice(log, name);
        ASSERT_TRUE(waitFor([&] { return log.opened + log.failed > 0; }, 5000));
        ASSERT_EQ(log.opened, 1) << log.text.toStdString();
        EXPECT_NEAR(device->length(), 1500, 2);
        device->play();
        ASSERT_TRUE(waitFor([&] { return device->position() > 300; }));
        EXPECT_EQ(device->mode(), MediaDevice::Mode::Playing);
        device->seek(1100);
        spin(100);
        EXPECT_GE(device->position(), 1100);
        ASSERT_TRUE(waitFor([&] { return log.ended == 1; }, 2000));
        EXPECT_EQ(device->position(), device->length());
    }
}

TEST_F(MpvSoundTest, MidiThatIsNoMusicFailsLikeAnyUnreadableFile)
{
    for (const char *name : {"broken.mid", "noise.mid"}) {
        SCOPED_TRACE(name);
        EventLog log;
        auto device = openDevice(log, name);
        ASSERT_TRUE(waitFor([&] { return log.opened + log.failed > 0; }, 5000));
        EXPECT_EQ(log.failed, 1);
        EXPECT_EQ(log.error, MediaDevice::UnknownFormat) << log.text.toStdString();
    }
}

TEST_F(MpvSoundTest, MidiWithoutASoundBankSaysWhatToInstall)
{
    qputenv("VELTO_SOUNDFONT", "/nonexistent/bank.sf2");
    EventLog log;
    auto device = openDevice(log, "tune.mid");
    ASSERT_TRUE(waitFor([&] { return log.failed + log.opened > 0; }));
    qunsetenv("VELTO_SOUNDFONT");
    EXPECT_EQ(log.error, MediaDevice::DeviceNotInstalled);
    EXPECT_EQ(log.text, QStringLiteral("no General MIDI sound bank is installed "
                                       "(install timgm6mb-soundfont or fluid-soundfont-gm)"));

    // Other files still play on the same device.
    device->setFileName(file("mono.wav"));
    device->open();
    EXPECT_TRUE(waitFor([&] { return log.opened == 1; }));
}

TEST_F(MpvSoundTest, FliTakesItsLengthFromTheHeader)
{
    EventLog log;
    auto device = openDevice(log, "anim.fli");
    ASSERT_TRUE(waitFor([&] { return log.opened + log.failed > 0; }, 5000));
    ASSERT_EQ(log.opened, 1) << log.text.toStdString();
    EXPECT_EQ(device->length(), 2000);
    device->play();
    ASSERT_TRUE(waitFor([&] { return device->position() > 200; }));
    spin(300);
    EXPECT_EQ(device->length(), 2000) << "mpv's own estimate never replaces it";
}

TEST_F(MpvSoundTest, ChangingTheGainsWhilePlayingNeverStallsPlayback)
{
    // Balance to both sides, through the centre, silence and back, as a
    // slider drag sends them.
    const std::pair<double, double> gains[] = {
        {1, 0.25}, {1, 0.5}, {0.25, 1}, {0.5, 0.5}, {0, 0}, {1, 1}, {0, 1}, {0.7, 0.3},
    };
    for (const char *name : {"mono.wav", "long.mid"}) {
        SCOPED_TRACE(name);
        EventLog log;
        auto device = openDevice(log, name);
        device->play();
        ASSERT_TRUE(waitFor([&] { return device->position() > 100; }, 5000));
        QElapsedTimer clock;
        clock.start();
        const qint64 start = device->position();
        for (int i = 0; i < 40; ++i) {
            const auto &[left, right] = gains[i % std::size(gains)];
            device->setGains(left, right);
            EXPECT_EQ(device->leftGain(), left);
            EXPECT_EQ(device->rightGain(), right);
            spin(20);
        }
        // Rebuilding the audio chain on each change would lose ~10 ms of
        // sound each time and fall far behind the clock.
        const qint64 played = device->position() - start;
        EXPECT_GT(double(played) / double(clock.elapsed()), 0.8) << played << " ms played";
        EXPECT_EQ(log.failed, 0);
    }
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
    const int bits = uchar(wav[format + 22]);
    const char *bytes = wav.constData() + data + 8;
    const qsizetype frames = (wav.size() - data - 8) / (bits / 8 * channels);
    auto sample = [&](qsizetype i) {
        if (bits == 32) {
            float f;
            std::memcpy(&f, bytes + 4 * i, 4);
            return double(f);
        }
        qint16 v;
        std::memcpy(&v, bytes + 2 * i, 2);
        return v / 32768.0;
    };
    double left = 0, right = 0;
    for (qsizetype i = 0; i < frames; ++i) {
        const double l = sample(channels * i);
        const double r = sample(channels * i + channels - 1);
        left += l * l;
        right += r * r;
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
    struct Case
    {
        const char *file;
        double left, right;
    };
    const Case cases[] = {{"mono.wav", 1, 0.25}, {"mono.wav", 0.5, 0.5}, {"tune.mid", 0.2, 1}};
    std::pair<double, double> full{};
    for (const Case &c : cases) {
        SCOPED_TRACE(c.file);
        for (bool reference : {true, false}) {
            EventLog log;
            auto device = openDevice(log, c.file, pcm);
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
