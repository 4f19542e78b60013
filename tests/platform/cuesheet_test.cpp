#include "platform/cuesheet.h"

#include <gtest/gtest.h>

namespace {

const QByteArray kThreeTracks = "REM GENRE Test\r\n"
                                "PERFORMER \"The Band\"\r\n"
                                "TITLE \"First Album\"\r\n"
                                "FILE \"disc.bin\" BINARY\r\n"
                                "  TRACK 01 AUDIO\r\n"
                                "    TITLE \"Opening\"\r\n"
                                "    PERFORMER \"Solo\"\r\n"
                                "    INDEX 01 00:00:00\r\n"
                                "  TRACK 02 AUDIO\r\n"
                                "    INDEX 00 00:03:00\r\n"
                                "    INDEX 01 00:05:10\r\n"
                                "  TRACK 03 AUDIO\r\n"
                                "    TITLE Without quotes here\r\n"
                                "    INDEX 01 01:00:74\r\n";

CueSheet sheetOf(int tracks, const QByteArray &type = "AUDIO")
{
    QByteArray text = "FILE \"x.bin\" BINARY\n";
    for (int t = 1; t <= tracks; ++t)
        text += QByteArray("TRACK ") + QByteArray::number(t) + " " + type +
                "\nINDEX 01 00:" + QByteArray::number(t / 75).rightJustified(2, '0') + ":" +
                QByteArray::number(t % 75).rightJustified(2, '0') + "\n";
    return parseCueSheet(text);
}

} // namespace

TEST(CueSheet, ReadsFileTracksStartsAndTitles)
{
    const CueSheet s = parseCueSheet(kThreeTracks);
    ASSERT_EQ(s.files.size(), 1);
    EXPECT_EQ(s.files[0].name, QStringLiteral("disc.bin"));
    EXPECT_EQ(s.title, QStringLiteral("First Album"));
    EXPECT_EQ(s.performer, QStringLiteral("The Band"));
    ASSERT_EQ(s.tracks.size(), 3);
    const struct
    {
        int number;
        qint32 start;
        const char *title, *performer;
    } want[] = {
        {1, 0, "Opening", "Solo"},
        {2, 5 * 75 + 10, "", ""}, // INDEX 00 is the pause before it
        {3, 60 * 75 + 74, "Without quotes here", ""},
    };
    for (int i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(s.tracks[i].number, want[i].number);
        EXPECT_EQ(s.tracks[i].start, want[i].start);
        EXPECT_EQ(s.tracks[i].title, QLatin1String(want[i].title));
        EXPECT_EQ(s.tracks[i].performer, QLatin1String(want[i].performer));
    }
    EXPECT_EQ(cueSheetProblem(s, (60 * 75 + 75) * 2352), QString());
}

TEST(CueSheet, TimesAreMinutesSecondsAndFrames)
{
    const struct
    {
        const char *text;
        qint32 sectors;
    } cases[] = {
        {"00:00:00", 0},  {"01:00:01", 4501}, {"120:00:00", 540000},
        {"00:60:00", -1}, {"00:00:75", -1},   {"1000:00:00", -1},
    };
    for (const auto &c : cases)
        EXPECT_EQ(cueTime(QString::fromUtf8(c.text)), c.sectors) << c.text;
}

TEST(CueSheet, KeywordsInAnyCaseAfterAByteOrderMark)
{
    EXPECT_EQ(parseCueSheet("\xef\xbb\xbftitle \"Bom\"\n").title, QStringLiteral("Bom"));
}

// Every way a sheet can fail to describe a playable image says which.
TEST(CueSheet, ProblemsNameWhatIsWrong)
{
    const QByteArray bin = "FILE a.bin BINARY\n", one = "TRACK 01 AUDIO\nINDEX 01 00:00:00\n";
    const char *order =
        " is out of order: the tracks of a CD are numbered 1 to 99, one after the other.";
    const struct
    {
        QByteArray text;
        QString problem;
        qint64 bytes = 100000LL * 2352;
    } cases[] = {
        {one, "The cue sheet names no image file."},
        {bin + one + "FILE b.bin BINARY\nTRACK 02 AUDIO\nINDEX 01 00:00:00\n",
         "The cue sheet names 2 files; Velto plays images kept in one file."},
        {"FILE a.flac WAVE\n" + one,
         "The image file a.flac is of type WAVE; Velto plays raw images (type BINARY) only."},
        {bin, "The cue sheet holds no track."},
        {"TRACK 01 AUDIO\n" + bin + "INDEX 01 00:00:00\n",
         "Track 1 comes before the image file is named."},
        {bin + "TRACK 02 AUDIO\nINDEX 01 00:00:00\nTRACK 01 AUDIO\nINDEX 01 00:01:00\n",
         "Track 1" + QString::fromLatin1(order)},
        {bin + "TRACK 01 MODE1/2048\nINDEX 01 00:00:00\n",
         "Track 1 is of type MODE1/2048; Velto reads images of 2352-byte sectors only."},
        {bin + "TRACK 01 AUDIO\nINDEX 00 00:00:00\n", "Track 1 has no start (INDEX 01)."},
        {bin + "TRACK 01 AUDIO\nINDEX 01 00:05:00\nTRACK 02 AUDIO\nINDEX 01 00:01:00\n",
         "Track 2 starts at or before the start of track 1."},
        {bin + one, "The image file a.bin was not found.", -1},
        {bin + one + "TRACK 02 AUDIO\nINDEX 01 00:00:10\n",
         "The image file a.bin ends before track 2 begins: it is cut short.", 10 * 2352},
        {bin + one + "TRACK 02 MODE2/2352\nINDEX 01 00:00:10\n", "", 11 * 2352},
    };
    for (const auto &c : cases)
        EXPECT_EQ(cueSheetProblem(parseCueSheet(c.text), c.bytes), c.problem) << c.text.constData();
}

TEST(CueSheet, NinetyNineTracksAtMost)
{
    EXPECT_EQ(cueSheetProblem(sheetOf(99), 1000 * 2352), QString());
    EXPECT_EQ(cueSheetProblem(sheetOf(100), 1000 * 2352),
              QStringLiteral("The cue sheet holds 100 tracks; a CD holds 99 at most."));
}
