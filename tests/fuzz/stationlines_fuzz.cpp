#include "fuzztarget.h"

#include "platform/streamtext.h"
#include "radio/fmpreset.h"
#include "radio/stationfile.h"
#include "radio/streamplaylist.h"
#include "radio/webstation.h"

#include <QUrl>

// Any bytes as a station file, a preset line, a station playlist or a
// stream's title: what is written reads back the same, and lists and texts
// stay within their limits.
VELTO_FUZZ_TARGET(stationlines)
{
    const QStringList lines = stationFileLines(input);
    for (const QString &line : lines) {
        const QString renamed = FmPreset::renamed(line, FmPreset::name(line));
        FUZZ_CHECK(FmPreset::frequency(renamed) == FmPreset::frequency(line));
        const WebStation station = readStationLine(line);
        FUZZ_CHECK(!station.name.isEmpty());
        if (!station.name.contains(QLatin1Char('@')))
            FUZZ_CHECK(readStationLine(stationLine(station)) == station);
    }
    // A second byte-order mark would lose the first to the reader: no file
    // of ours has one.
    const bool bom = !lines.isEmpty() && lines.first().startsWith(QChar(0xfeff));
    if (!bom)
        FUZZ_CHECK(stationFileLines(stationFileBytes(lines)) == lines);
    const QUrl base(QStringLiteral("http://radio.invalid/listen/station.pls"));
    FUZZ_CHECK(streamPlaylistEntries(input, base).size() <= kMaxStreamPlaylistEntries);
    (void)stationPlaylist(input, base);
    FUZZ_CHECK(streamText(input).size() <= kMaxStreamText);
}
