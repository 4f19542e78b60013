#include "lyricsfuzz.h"

VELTO_FUZZ_TARGET(lrc)
{
    const LyricsData d = readLrc(input);
    followLyrics(d);
    // Every tagged line keeps a time, in order.
    for (int k = 1; k <= d.timedCount; ++k) {
        FUZZ_CHECK(d.times[size_t(k)] >= 1);
        FUZZ_CHECK(k == 1 || d.times[size_t(k)] >= d.times[size_t(k - 1)]);
    }
}
