#pragma once

#include "platform/streamtext.h"
#include "radio/fmpreset.h"
#include "radio/stationfile.h"
#include "radio/streamplaylist.h"
#include "radio/webstation.h"

#include <QByteArrayView>
#include <QUrl>

// Runs every reader of the radio modes over the bytes; false when one of them
// breaks a rule it promises. Shared by the fuzz target and the test that
// replays its regression files.
inline bool checkStationReaders(QByteArrayView bytes)
{
    const QStringList lines = stationFileLines(bytes);
    for (const QString &line : lines) {
        (void)FmPreset::frequency(line);
        const QString renamed = FmPreset::renamed(line, FmPreset::name(line));
        if (FmPreset::frequency(renamed) != FmPreset::frequency(line))
            return false;
        const WebStation station = readStationLine(line);
        if (station.name.isEmpty())
            return false;
        // What is written reads back as the same station.
        if (!station.name.contains(QLatin1Char('@')) &&
            readStationLine(stationLine(station)) != station)
            return false;
    }
    // Lines written and read again are the same lines (a second byte-order
    // mark would lose the first to the reader: no file of ours has one).
    const bool bom = !lines.isEmpty() && lines.first().startsWith(QChar(0xfeff));
    if (!bom && stationFileLines(stationFileBytes(lines)) != lines)
        return false;
    const QUrl base(QStringLiteral("http://radio.invalid/listen/station.pls"));
    if (streamPlaylistEntries(bytes, base).size() > kMaxStreamPlaylistEntries)
        return false;
    (void)stationPlaylist(bytes, base);
    return streamText(bytes).size() <= kMaxStreamText;
}
