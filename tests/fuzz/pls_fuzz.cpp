#include "playlistfuzz.h"

VELTO_FUZZ_TARGET(pls)
{
    fuzzPlaylist(input, QStringLiteral("list.pls"));
}
