#include "player/lyrics.h"

#include "support/temphome.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<qint32> timesOf(const LyricsData &d)
{
    return std::vector<qint32>(d.times.begin() + 1, d.times.begin() + 1 + d.timedCount);
}

} // namespace

TEST(LoadLyrics, ReadsBothDialectsWithTheirColumnsAndUnits)
{
    const std::tuple<const char *, QByteArray, QStringList, std::vector<qint32>, bool> cases[] = {
        {"native",
         "Velto Lyric\r\n:000012500: Hello\r\nplain words\r\n:000013000: World\r\n",
         {"Hello", "plain words", "World"},
         {12500, 13000},
         true},
        {"native lower-case header and bad columns",
         "velto lyric v1\n:0000125000: no\n000012500: no\n:000012500:x\n:000000000: zero\n",
         {":0000125000: no", "000012500: no", ":000012500:x", "zero"},
         {0},
         false},
        {"tenths",
         "; Title: x\n; by me\n000000015Hello\n000000000 untimed\nxyz\n000000020",
         {"Hello", "000000000 untimed", "xyz", ""},
         {1500, 2000},
         true},
        {"cd frames",
         "; TITLE\n; CD\n000000075Hello\n000000001a\n000000150b\n",
         {"Hello", "a", "b"},
         {1000, 13, 2000},
         true},
        {"no header", "just\nwords\n", {"just", "words"}, {}, false},
    };
    for (const auto &[name, file, lines, times, loaded] : cases) {
        SCOPED_TRACE(name);
        const LyricsData d = readLyr(file);
        EXPECT_EQ(d.lines, lines);
        EXPECT_EQ(timesOf(d), times);
        EXPECT_EQ(d.LyricsLoaded, loaded);
    }
}

TEST(LoadLyrics, KeepsTimesForTheFirst500TimedLinesOnly)
{
    QByteArray file = "VELTO LYRIC\n";
    for (int n = 1; n <= 600; ++n)
        file += ":" + QByteArray::number(n * 1000).rightJustified(9, '0') + ": line " +
                QByteArray::number(n) + "\n";
    const LyricsData d = readLyr(file);
    EXPECT_EQ(d.lines.size(), 600);
    EXPECT_EQ(d.lines[599], "line 600");
    EXPECT_EQ(d.timedCount, 500);
    EXPECT_EQ(d.times[500], 500000);
    EXPECT_EQ(d.rows[500], 499);
}

TEST(LoadLyrics, LrcTimeTagsOffsetsAndRepeatedLines)
{
    const QByteArray file = "[ar:Someone]\n[ti:Song]\n[offset:+500]\n"
                            "[00:10.00][01:00.50]Chorus\n"
                            "[00:05]  Verse\n"
                            "[00:20.1]Tenths\n[00:21.123]Millis\n"
                            "[00:00.20]Early\n"
                            "[00:30.00]\n"
                            "[aa:bb]Not a time\n[00:40.00]([ad lib])\n";
    const LyricsData d = readLrc(file);
    EXPECT_EQ(d.lines, (QStringList{"Early", "Verse", "Chorus", "Tenths", "Millis", "",
                                    "([ad lib])", "Chorus"}));
    EXPECT_EQ(timesOf(d), (std::vector<qint32>{1, 4500, 9500, 19600, 20623, 29500, 39500, 60000}));
    EXPECT_TRUE(d.LyricsLoaded);

    const LyricsData later = readLrc("[offset:-250]\n[00:01.00]a\n");
    EXPECT_EQ(timesOf(later), std::vector<qint32>{1250});
    const LyricsData untimed = readLrc("plain\n\nwords\n[re:tool]\n");
    EXPECT_EQ(untimed.lines, (QStringList{"plain", "words"}));
    EXPECT_FALSE(untimed.LyricsLoaded);
}

TEST(LoadLyrics, FindsTheLyricFileBesideTheMediaInAnyLetterCaseOrShowsNoLyrics)
{
    TempHome home;
    home.write("music/a.mp3", "x");
    home.write("music/A.LYR", "VELTO LYRIC\n:000001000: from lyr\n");
    home.write("music/a.Lrc", "[00:01.00]from lrc\n");
    home.write("music/b.lrc", "[00:02.00]only lrc\n");
    EXPECT_EQ(LoadLyrics(lyricsFileFor(home.file("music/a.mp3"))).lines, QStringList{"from lyr"});
    EXPECT_EQ(LoadLyrics(lyricsFileFor(home.file("music/b.mp3"))).lines, QStringList{"only lrc"});
    const LyricsData none = LoadLyrics(lyricsFileFor(home.file("music/c.mp3")));
    EXPECT_EQ(none.lines, QStringList{"No Lyrics"});
    EXPECT_FALSE(none.LyricsLoaded);
}

TEST(PlayLyrics, FollowsThePositionSearchesAgainAfterASeekAndPairsRowsWithTimes)
{
    const LyricsData d =
        readLyr("VELTO LYRIC\n:000001000: one\nuntimed\n:000002000: two\n:000003000: three\n"
                ":000003000: three again\n:000005000: five\n");
    const std::tuple<const char *, int, qint64, int, int> cases[] = {
        {"before the next line", 1, 1500, 1, -1},  {"next line begins", 1, 2000, 2, 2},
        {"two lines share a time", 3, 3000, 4, 4}, {"seek forward past two lines", 1, 4000, 4, 4},
        {"seek backwards", 5, 1200, 1, 0},         {"seek before the first line", 4, 10, 1, 0},
        {"past the last line", 5, 9000, 5, 5},     {"no time at the current line", 0, 2500, 0, -1},
    };
    for (const auto &[what, line, pos, newLine, row] : cases) {
        SCOPED_TRACE(what);
        const LyricStep step = PlayLyrics(d, pos, line);
        EXPECT_EQ(step.line, newLine);
        EXPECT_EQ(step.row, row);
    }

    // A double click pairs rows with times by position: row, then the seek and line.
    const LyricsData pairs = readLyr("VELTO LYRIC\n:000001000: one\nuntimed\n:000002000: two\n");
    const std::tuple<int, qint64, int> clicks[] = {
        {0, 1000, 1}, {1, 2000, 2}, {2, -1, 3}, {-1, -1, 0}};
    for (const auto &[row, seek, line] : clicks) {
        const LyricJump j = lyricsDoubleClick(pairs, row);
        EXPECT_EQ(j.seekMs, seek) << row;
        EXPECT_EQ(j.line, line) << row;
    }
}
