#include "playlistfuzz.h"

VELTO_FUZZ_TARGET(m3u)
{
    fuzzPlaylist(input, QStringLiteral("list.m3u"));
}
