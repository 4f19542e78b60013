#include "cd/cdplayerini.h"
#include "fuzztarget.h"

// A title file kept for years by another program: no crash, no hang, and every
// title names a track of the disc asked about.
VELTO_FUZZ_TARGET(cdplayerini)
{
    if (input.isEmpty())
        return;
    // The first byte is the track count of the disc asked about.
    const int tracks = quint8(input[0]) % 100;
    const CdPlayerTitles read = readCdPlayerIni(input.mid(1), QStringLiteral("4D5E6F"), tracks);
    FUZZ_CHECK(read.found || (read.titles.isEmpty() && read.message.isEmpty()));
    for (const auto &[track, title] : read.titles)
        FUZZ_CHECK(track >= 0 && track < tracks);
}
