#pragma once

#include "fuzztarget.h"

#include "player/lyrics.h"

#include <limits>
#include <vector>

// Whatever was read, following it over a playback with seeks both ways and
// double clicks on every row stays within the words read.
inline void followLyrics(const LyricsData &d)
{
    FUZZ_CHECK(d.timedCount >= 0 && d.timedCount <= LyricsData::kMaxTimed);
    for (int k = 1; k <= d.timedCount; ++k)
        FUZZ_CHECK(d.rows[size_t(k)] >= 0 && d.rows[size_t(k)] < d.lines.size());
    if (!d.LyricsLoaded)
        return;

    std::vector<qint64> positions;
    for (int k = 1; k <= d.timedCount; ++k) {
        const qint64 t = d.times[size_t(k)];
        positions.insert(positions.end(), {t - 1, t, t + 1});
    }
    positions.insert(positions.end(), {0, -1, 1, std::numeric_limits<qint32>::max()});
    int line = 1; // where the player starts
    for (const auto &order :
         {positions, std::vector<qint64>(positions.rbegin(), positions.rend())}) {
        for (const qint64 ms : order) {
            const LyricStep step = PlayLyrics(d, ms, line);
            FUZZ_CHECK(step.line >= 0 && step.line <= LyricsData::kMaxTimed);
            FUZZ_CHECK(step.row >= -1 && step.row < d.lines.size());
            line = step.line;
        }
    }
    for (int row = -2; row <= d.lines.size(); ++row) {
        const LyricJump jump = lyricsDoubleClick(d, row);
        FUZZ_CHECK(jump.line >= -1 && jump.line <= LyricsData::kMaxTimed);
        FUZZ_CHECK(jump.seekMs == -1 || jump.seekMs > 0);
    }
}
