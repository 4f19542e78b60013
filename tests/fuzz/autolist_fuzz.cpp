#include "fuzztarget.h"

#include "core/schedule.h"
#include "player/autolist.h"

// The schedule list: every entry read is one the schedule can take apart,
// and what is saved reads back the same.
VELTO_FUZZ_TARGET(autolist)
{
    const QStringList list = LoadAutoList(fuzzWriteScratch(QStringLiteral("autolist.txt"), input));
    for (const QString &entry : list) {
        FUZZ_CHECK(!entry.trimmed().isEmpty());
        FUZZ_CHECK(entryOnTime(entry).size() <= 5 && entryOffTime(entry).size() <= 5);
        const int preset = entryPreset(entry);
        FUZZ_CHECK(preset >= -32768 && preset <= 32767);
        for (const QChar today : QStringLiteral("UMTWRFS"))
            entryApplies(entry, today);
        if (const auto made =
                makeEntry(entryDay(entry), entryOnTime(entry), entryOffTime(entry), preset)) {
            FUZZ_CHECK(entryOnTime(*made) == entryOnTime(entry).leftJustified(5));
            FUZZ_CHECK(entryPreset(*made) == preset);
        }
    }
    const QString saved = fuzzScratchFile(QStringLiteral("saved.txt"));
    FUZZ_CHECK(SaveAutoList(saved, list));
    FUZZ_CHECK(LoadAutoList(saved) == list);
}
