#include "fuzztarget.h"
#include "platform/cuesheet.h"

// Any bytes read as a cue sheet: no crash, no hang, and a sheet said to be
// playable is one the CD code can play without checking again.
VELTO_FUZZ_TARGET(cuesheet)
{
    const CueSheet sheet = parseCueSheet(input);
    // No image, an empty one, and one as long as the sheet could want.
    for (const qint64 imageBytes : {qint64(-1), qint64(0), qint64(1) << 40}) {
        if (!cueSheetProblem(sheet, imageBytes).isEmpty())
            continue;
        FUZZ_CHECK(imageBytes > 0);
        FUZZ_CHECK(sheet.files.size() == 1);
        FUZZ_CHECK(!sheet.tracks.isEmpty() && sheet.tracks.size() <= CueSheet::kMaxTracks);
        qint32 before = -1;
        for (qsizetype i = 0; i < sheet.tracks.size(); ++i) {
            const CueSheet::Track &t = sheet.tracks[i];
            // A disc may begin at a track other than 1, never past 99.
            FUZZ_CHECK(t.number == sheet.tracks[0].number + int(i));
            FUZZ_CHECK(t.number >= 1 && t.number <= CueSheet::kMaxTracks);
            FUZZ_CHECK(t.file == 0 && t.start > before);
            before = t.start;
        }
    }
    const qint32 time = cueTime(QString::fromLatin1(input.left(16)));
    FUZZ_CHECK(time >= -1 && time <= (999 * 60 + 59) * 75 + 74);
}
