#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>

// The words of one item: the rows of the lyrics list and the start times of
// its timed lines.
struct LyricsData
{
    static constexpr int kMaxTimed = 500;

    QStringList lines; // rows of the list, timed and untimed, in file order
    // times[k]: start in ms of the k-th timed line (k from 1); 0 = no time.
    std::array<qint32, kMaxTimed + 1> times{};
    // rows[k]: the row of the list that holds the k-th timed line.
    std::array<int, kMaxTimed + 1> rows{};
    int timedCount = 0;        // entries of times in use
    bool LyricsLoaded = false; // some line has a time above 0: follow it on each tick
};

// Reads a lyric file: ".lrc" by its time tags, anything else as a ".lyr"
// file (either header). A missing or unreadable file, or one that is no
// regular file, gives the single row "No Lyrics".
LyricsData LoadLyrics(const QString &path);
// The lyric file beside a media file: the ".lyr" one, else the ".lrc" one,
// whatever the letter case on disk; the ".lyr" name when there is neither.
QString lyricsFileFor(const QString &mediaPath);

LyricsData readLyr(const QByteArray &bytes);
LyricsData readLrc(const QByteArray &bytes);

// One playback tick. `line` is the current timed line; returns the new one
// and the list row to select (-1: leave the selection alone). Callers skip
// the call while the list is hidden or nothing is loaded.
struct LyricStep
{
    int line = 0;
    int row = -1;
};
LyricStep PlayLyrics(const LyricsData &lyrics, qint64 positionMs, int line);

// Double click on a row: rows and times pair by position (row r, time r + 1),
// so untimed rows shift the pairing. seekMs is -1 when there is nothing to
// seek to; line is -1 when the row is out of range and nothing changes.
struct LyricJump
{
    qint64 seekMs = -1;
    int line = -1;
};
LyricJump lyricsDoubleClick(const LyricsData &lyrics, int row);
