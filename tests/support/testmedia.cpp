#include "testmedia.h"

#include <QDataStream>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>

#include <cmath>

namespace {

QByteArray wavBytes(const QByteArray &pcm, int sampleRate, int bitsPerSample)
{
    const quint16 blockAlign = quint16(bitsPerSample / 8);
    QByteArray out;
    QDataStream s(&out, QIODevice::WriteOnly);
    s.setByteOrder(QDataStream::LittleEndian);
    s.writeRawData("RIFF", 4);
    s << quint32(36 + pcm.size());
    s.writeRawData("WAVEfmt ", 8);
    // PCM, mono
    s << quint32(16) << quint16(1) << quint16(1) << quint32(sampleRate)
      << quint32(sampleRate * blockAlign) << blockAlign << quint16(bitsPerSample);
    s.writeRawData("data", 4);
    s << quint32(pcm.size());
    return out + pcm;
}

} // namespace

QString TestMedia::write(const QString &name, const QByteArray &bytes) const
{
    QFile out(file(name));
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) != bytes.size())
        return QString();
    return out.fileName();
}

QString TestMedia::sineWav(const QString &name, int ms, int frequency) const
{
    constexpr int sampleRate = 22050;
    const qint64 samples = qint64(sampleRate) * ms / 1000;
    QByteArray pcm;
    QDataStream s(&pcm, QIODevice::WriteOnly);
    s.setByteOrder(QDataStream::LittleEndian);
    for (qint64 i = 0; i < samples; ++i)
        s << qint16(
            std::lround(12000.0 * std::sin(2.0 * M_PI * frequency * double(i) / sampleRate)));
    return write(name, wavBytes(pcm, sampleRate, 16));
}

QString TestMedia::silentWav(const QString &name, int ms) const
{
    return write(name, wavBytes(QByteArray(8 * ms, char(0x80)), 8000, 8));
}

QString TestMedia::encoded(const QString &name, int ms, const QStringList &extraArgs) const
{
    const QString source = QStringLiteral("sine=frequency=440:duration=%1").arg(ms / 1000.0);
    return runFfmpeg(name, QStringList{"-f", "lavfi", "-i", source, "-ac", "1"} << extraArgs);
}

QString TestMedia::video(const QString &name, int ms) const
{
    const QString seconds = QString::number(ms / 1000.0);
    const QString picture = QStringLiteral("testsrc=size=160x120:rate=25:duration=") + seconds;
    return runFfmpeg(name, {"-f", "lavfi", "-i", picture, "-f", "lavfi", "-i",
                            "sine=duration=" + seconds, "-ac", "1"});
}

QString TestMedia::runFfmpeg(const QString &name, const QStringList &inputArgs) const
{
    const QStringList args = QStringList{"-loglevel", "error", "-y"} << inputArgs << file(name);
    QProcess ffmpeg;
    ffmpeg.start(QStringLiteral("ffmpeg"), args);
    if (!ffmpeg.waitForFinished(30000) || ffmpeg.exitStatus() != QProcess::NormalExit ||
        ffmpeg.exitCode() != 0 || !QFile::exists(file(name)))
        return QString();
    return file(name);
}

QString TestMedia::module(const QString &name) const
{
    // One sample: a 64-byte square wave, looped whole.
    constexpr int sampleBytes = 64;
    QByteArray mod;
    mod += QByteArray("velto test tune").leftJustified(20, '\0');
    for (int s = 1; s <= 31; ++s) {
        mod += (s == 1 ? QByteArray("square") : QByteArray()).leftJustified(22, '\0');
        // Length in words, finetune, volume, loop start, loop length in words.
        const int words = s == 1 ? sampleBytes / 2 : 0;
        mod += QByteArray(1, '\0') + char(words) + '\0' + char(s == 1 ? 64 : 0) +
               QByteArray(3, '\0') + char(s == 1 ? words : 1);
    }
    mod.append(char(1));                   // one position
    mod.append(char(127));                 // restart byte
    mod += QByteArray(128, '\0') + "M.K."; // the order of patterns, then the signature

    // Pattern 0: speed 3, a note on each beat, a break after row 15, so the
    // song lasts 16 rows of 60 ms.
    auto cell = [](int sample, int period, int effect, int param) {
        QByteArray c(4, '\0');
        c[0] = char((sample & 0xf0) | ((period >> 8) & 0x0f));
        c[1] = char(period & 0xff);
        c[2] = char(((sample & 0x0f) << 4) | (effect & 0x0f));
        c[3] = char(param);
        return c;
    };
    for (int row = 0; row < 64; ++row) {
        for (int channel = 0; channel < 4; ++channel) {
            if (channel == 0 && row % 4 == 0)
                mod += cell(1, row % 8 == 0 ? 428 : 320, row == 0 ? 0xF : 0, row == 0 ? 3 : 0);
            else if (channel == 1 && row == 15)
                mod += cell(0, 0, 0xD, 0);
            else
                mod += cell(0, 0, 0, 0);
        }
    }
    for (int i = 0; i < sampleBytes; ++i)
        mod.append(char(i < sampleBytes / 2 ? 60 : -60));
    return write(name, mod);
}

QString TestMedia::garbage(const QString &name, int bytes) const
{
    QByteArray data(bytes / 4 * 4, Qt::Uninitialized);
    QRandomGenerator random(7);
    random.fillRange(reinterpret_cast<quint32 *>(data.data()), data.size() / 4);
    return write(name, data);
}
