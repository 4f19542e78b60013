#include "platform/cuesheet.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

// Any bytes read as a cue sheet: no crash, no hang, and a sheet said to be
// playable is one the CD code can play without checking again.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const CueSheet sheet = parseCueSheet(bytes);
    // An image as long as the sheet could want, and one cut short.
    for (const qint64 imageBytes : {qint64(-1), qint64(0), qint64(1) << 40}) {
        if (!cueSheetProblem(sheet, imageBytes).isEmpty())
            continue;
        if (imageBytes <= 0 || sheet.files.size() != 1 || sheet.tracks.isEmpty() ||
            sheet.tracks.size() > CueSheet::kMaxTracks)
            __builtin_trap();
        qint32 before = -1;
        for (qsizetype i = 0; i < sheet.tracks.size(); ++i) {
            const CueSheet::Track &t = sheet.tracks[i];
            // A disc may begin at a track other than 1, never past 99.
            if (t.number != sheet.tracks[0].number + int(i) || t.number < 1 ||
                t.number > CueSheet::kMaxTracks || t.file != 0 || t.start <= before)
                __builtin_trap();
            before = t.start;
        }
    }
    const qint32 time = cueTime(QString::fromLatin1(bytes.left(16)));
    if (time < -1 || time > (999 * 60 + 59) * 75 + 74)
        __builtin_trap();
    return 0;
}
