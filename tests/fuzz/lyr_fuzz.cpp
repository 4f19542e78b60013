#include "lyricsfuzz.h"

// Both dialects: the timed text ("; TITLE") and Velto's own ("VELTO LYRIC").
VELTO_FUZZ_TARGET(lyr)
{
    const LyricsData d = readLyr(input);
    followLyrics(d);
}
