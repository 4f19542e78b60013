#include "player/lyricsdisplay.h"

#include "support/temphome.h"

#include <QListWidget>

#include <gtest/gtest.h>

namespace {

struct Karaoke
{
    Karaoke(const QByteArray &file)
    {
        list.show();
        display.LoadLyrics(home.write(QStringLiteral("song.lyr"), file));
    }
    // The rows selected while the position runs from `from` to `to` in ticks of 100 ms.
    QList<int> play(qint64 from, qint64 to)
    {
        QList<int> rows;
        for (qint64 pos = from; pos <= to; pos += 100) {
            display.ShowLyrics(pos);
            if (rows.isEmpty() || rows.last() != list.currentRow())
                rows << list.currentRow();
        }
        return rows;
    }

    TempHome home;
    QListWidget list;
    LyricsDisplay display{list};
};

} // namespace

TEST(LyricsDisplay, SelectsEachLineAsThePositionReachesItUnlessHiddenOrUntimed)
{
    Karaoke k(
        "VELTO LYRIC\n(intro)\n:000001000: one\n:000002000: two\nbridge\n:000003050: three\n");
    EXPECT_EQ(k.list.count(), 5);
    EXPECT_TRUE(k.display.LyricsLoaded());
    // Before the first line its row is already marked; the untimed rows are passed over.
    EXPECT_EQ(k.play(0, 4000), QList<int>({1, 2, 4}));
    EXPECT_EQ(k.display.LyricLine(), 3);

    Karaoke hidden("VELTO LYRIC\n:000000500: one\n:000001000: two\n");
    hidden.list.hide();
    EXPECT_EQ(hidden.play(0, 2000), QList<int>({-1}));

    Karaoke untimed("just words\nno times\n");
    EXPECT_FALSE(untimed.display.LyricsLoaded());
    EXPECT_EQ(untimed.play(0, 2000), QList<int>({-1}));
}
