#include "cdtable.h"

#include "platform/text.h"

#include <cmath>

namespace {

qint32 sectorsToMs(qint64 sectors)
{
    return qint32(sectors * 1000 / 75);
}

int digitSum(qint32 n)
{
    int sum = 0;
    for (; n > 0; n /= 10)
        sum += n % 10;
    return sum;
}

} // namespace

QString CDHex(qint64 value, int digits)
{
    const QString hex = QStringLiteral("00000000") + QString::number(quint32(value), 16);
    return hex.right(digits).toLower();
}

QString MakeCDEntry(int track, const QString &title, qint32 lengthMs)
{
    const double seconds = lengthMs / 1000.0;
    const int minutes = int(seconds / 60);
    // The rest rounds on its own, so 59.6 s reads "00:60".
    const int rest = int(std::round(seconds - minutes * 60.0));
    return twoDigits(track) + QStringLiteral(" - ") + title + QStringLiteral("  (") +
           twoDigits(minutes) + QLatin1Char(':') + twoDigits(rest) + QLatin1Char(')');
}

CdTable readCdTable(const CdDisc &disc)
{
    CdTable table;
    table.CDTracks = qint16(qMin<qsizetype>(disc.tracks.size(), 99));
    qint32 sum = 0, checksum = 0;
    for (int t = 1; t <= table.CDTracks; ++t) {
        const CdDisc::Track &track = disc.tracks[t - 1];
        CdTrackTime &time = table.tracks[size_t(t)];
        time.Min = qint16(track.start / 4500);
        time.Sec = qint16(track.start / 75 % 60);
        time.Frame = qint16(track.start % 75);
        time.Frames = time.Min * 4500 + time.Sec * 75 + time.Frame;
        time.StartMs = sectorsToMs(track.start);
        time.LengthMs = sectorsToMs(track.sectors);
        time.EndMs = time.StartMs + time.LengthMs - 1;
        // The blank of a number turned into text stays: "Track  1".
        table.names << MakeCDEntry(t, QStringLiteral("Track  ") + QString::number(t),
                                   time.LengthMs);
        sum += time.Min * 65536 + time.Sec * 256 + time.Frame;
        checksum += digitSum(time.Min * 60 + time.Sec);
    }
    table.CDSeconds = sectorsToMs(disc.lengthSectors()) / 1000;
    table.CDDBId = CDHex(checksum % 255, 2) + CDHex(table.CDSeconds, 4) + CDHex(table.CDTracks, 2);
    table.CDPlayerId = QString::number(quint32(sum), 16).toUpper();
    return table;
}

int findCdTrack(const CdTable &table, qint32 positionMs)
{
    for (int t = 1; t <= 99; ++t) {
        if (table.tracks[size_t(t)].EndMs >= positionMs)
            return t;
    }
    return 0;
}

QString cdStatusWord(int mode, bool paused)
{
    switch (mode) {
    case 524:
        return QStringLiteral("No Disc");
    case 525:
        return paused ? QStringLiteral("Paused") : QStringLiteral("Stopped");
    case 526:
        return QStringLiteral("Playing");
    case 529:
        return QStringLiteral("Paused");
    case 530:
        return QStringLiteral("Ready");
    default:
        return QStringLiteral("unknown");
    }
}
