#include "discimage.h"

#include <QDataStream>
#include <QDir>
#include <QFile>

#include <cmath>
#include <numeric>

namespace {

constexpr int kFramesPerSector = 588; // stereo samples at 44.1 kHz

QString msf(qint32 sector)
{
    return QStringLiteral("%1:%2:%3")
        .arg(sector / 4500, 2, 10, QLatin1Char('0'))
        .arg(sector / 75 % 60, 2, 10, QLatin1Char('0'))
        .arg(sector % 75, 2, 10, QLatin1Char('0'));
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile out(path);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size();
}

} // namespace

QByteArray DiscImage::binBytes() const
{
    QByteArray out;
    QDataStream s(&out, QIODevice::WriteOnly);
    s.setByteOrder(QDataStream::LittleEndian);
    for (int t = 0; t < sectors.size(); ++t) {
        const double pitch = 220.0 * (t + 1);
        const qint64 frames = qint64(sectors[t]) * kFramesPerSector;
        for (qint64 i = 0; i < frames; ++i) {
            const qint16 left =
                qint16(std::lround(9000.0 * std::sin(2 * M_PI * pitch * i / 44100)));
            // The right channel differs, so swapped channels would show.
            s << left << qint16(left / 2 + t);
        }
    }
    return out;
}

QByteArray DiscImage::cueText(const QString &binFile) const
{
    QString cue;
    if (!albumPerformer.isEmpty())
        cue += QStringLiteral("PERFORMER \"%1\"\r\n").arg(albumPerformer);
    if (!albumTitle.isEmpty())
        cue += QStringLiteral("TITLE \"%1\"\r\n").arg(albumTitle);
    cue += QStringLiteral("FILE \"%1\" BINARY\r\n").arg(binFile);
    qint32 start = 0;
    for (int t = 0; t < sectors.size(); ++t) {
        cue += QStringLiteral("  TRACK %1 AUDIO\r\n").arg(t + 1, 2, 10, QLatin1Char('0'));
        if (!titles.value(t).isEmpty())
            cue += QStringLiteral("    TITLE \"%1\"\r\n").arg(titles[t]);
        cue += QStringLiteral("    INDEX 01 %1\r\n").arg(msf(start));
        start += sectors[t];
    }
    return cue.toUtf8();
}

QString DiscImage::write(const QString &folder, const QString &name) const
{
    QDir().mkpath(folder);
    const QString bin = binName.isEmpty() ? name + QStringLiteral(".bin") : binName;
    const QString cuePath = QDir(folder).filePath(name + QStringLiteral(".cue"));
    if (!writeFile(QDir(folder).filePath(bin), binBytes()) || !writeFile(cuePath, cueText(bin)))
        return QString();
    return cuePath;
}

QList<qint32> DiscImage::offsets() const
{
    QList<qint32> out;
    qint32 at = kLeadIn;
    for (qint32 n : sectors) {
        out << at;
        at += n;
    }
    return out;
}

qint32 DiscImage::leadOut() const
{
    return std::accumulate(sectors.begin(), sectors.end(), kLeadIn);
}

// The identity CDDB servers file a disc under: the digit sum of every
// track's start in seconds, the playing time in seconds, the track count.
QString DiscImage::cddbId() const
{
    const auto digitSum = [](int n) {
        int sum = 0;
        for (; n > 0; n /= 10)
            sum += n % 10;
        return sum;
    };
    int n = 0;
    for (qint32 offset : offsets())
        n += digitSum(offset / 75);
    const quint32 seconds = quint32(leadOut() / 75 - offsets().first() / 75);
    const quint32 id = (quint32(n % 255) << 24) | (seconds << 8) | quint32(sectors.size());
    return QStringLiteral("%1").arg(id, 8, 16, QLatin1Char('0'));
}

// The classic CD player's: the starts as minute, second and frame bytes, added up.
QString DiscImage::cdPlayerId() const
{
    quint32 sum = 0;
    for (qint32 offset : offsets())
        sum += quint32(offset / 4500) << 16 | quint32(offset / 75 % 60) << 8 | quint32(offset % 75);
    return QString::number(sum, 16).toUpper();
}
