#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

// The station files of the radio modes, "stations.txt" (FM presets) and
// "webradio.txt": plain text, one entry a line, in list order.

// Lines of a station file's bytes, UTF-8 or Windows-1252; the end of the last
// line adds no empty entry, but an empty line before it is one.
QStringList stationFileLines(QByteArrayView bytes);
// The file's bytes for lines, in UTF-8, each ended by "\n".
QByteArray stationFileBytes(const QStringList &lines);

struct StationFile
{
    QStringList lines;
    // Empty when the file was read or is not there yet. Otherwise why it could
    // not be read: a list kept in memory must then not be written over it.
    QString problem;
};

// More than any list of stations needs; a bigger file is not one of ours.
constexpr qint64 kMaxStationFileBytes = 8 * 1024 * 1024;

StationFile readStationFile(const QString &path);
// Replaces the file whole or not at all; false when it could not be written.
bool writeStationFile(const QString &path, const QStringList &lines);
