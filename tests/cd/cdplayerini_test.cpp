#include "cd/cdplayerini.h"

#include <gtest/gtest.h>

namespace {

using Titles = QList<QPair<int, QString>>;

const QByteArray kFile = "[1A2B3C]\r\n"
                         "EntryType=1\r\n"
                         "artist=Someone Else\r\n"
                         "title=Another Disc\r\n"
                         "numtracks=2\r\n"
                         "0=Wrong One\r\n"
                         "[4D5E6F]\r\n"
                         "ARTIST=The Band\r\n"
                         "TITLE=First Album\r\n"
                         "NUMTRACKS=3\r\n"
                         "ORDER=0 1 2\r\n"
                         "0=Opening\r\n"
                         "\r\n"
                         "   \r\n"
                         "no equals sign here\r\n"
                         "2=Closing = Last\r\n"
                         "1=Middle\r\n"
                         "[7A8B9C]\r\n"
                         "0=Other Disc\r\n";

} // namespace

TEST(CdPlayerIni, NamesTheTracksOfTheDiscsSection)
{
    const CdPlayerTitles t = readCdPlayerIni(kFile, QStringLiteral("4D5E6F"), 3);
    EXPECT_TRUE(t.found);
    EXPECT_EQ(t.titles, (Titles{{0, "Opening"}, {2, "Closing = Last"}, {1, "Middle"}}));
    EXPECT_EQ(t.message, QString());
}

TEST(CdPlayerIni, SectionsAndKeys)
{
    const struct
    {
        const char *what;
        QByteArray ini;
        QString id;
        int tracks;
        bool found;
        Titles titles;
        const char *message;
    } cases[] = {
        {"no such section", kFile, "ABCDEF", 3, false, {}, ""},
        {"an empty file", "", "4D5E6F", 3, false, {}, ""},
        {"a section in another case and with blanks after it",
         "[abc1]  \n0=One\n",
         "ABC1",
         1,
         true,
         {{0, "One"}},
         ""},
        {"a lower-case id", "[ABC1]\n0=One\n", "abc1", 1, true, {{0, "One"}}, ""},
        {"a header with blanks before it is no header",
         "  [ABC1]\n0=One\n",
         "ABC1",
         1,
         false,
         {},
         ""},
        {"the next section ends it", "[A]\n0=a\n[B]\n1=b\n", "A", 2, true, {{0, "a"}}, ""},
        {"the same section twice: reading stops at the second",
         "[A]\n0=a\n[A]\n1=b\n",
         "A",
         2,
         true,
         {{0, "a"}},
         ""},
        {"a key past the last track", "[A]\n3=x\n2=y\n", "A", 3, true, {{2, "y"}}, ""},
        {"a negative key", "[A]\n-1=x\n", "A", 3, true, {}, ""},
        {"a key that is no number names track 1, and a later 0= again",
         "[A]\nEntryType=1\n0=First\n",
         "A",
         3,
         true,
         {{0, "1"}, {0, "First"}},
         ""},
        {"a key with a number and more", "[A]\n1st=x\n", "A", 3, true, {{1, "x"}}, ""},
        {"keys compare in upper case",
         "[A]\nNumTracks=9\n",
         "A",
         3,
         true,
         {},
         "Number of Tracks do not match! ( 3 9)"},
        {"a wrong count stops the reading, titles before it stay",
         "[A]\n0=a\nNUMTRACKS=14\n1=b\n",
         "A",
         12,
         true,
         {{0, "a"}},
         "Number of Tracks do not match! ( 12 14)"},
        {"the count's own text goes into the message",
         "[A]\nNUMTRACKS= 4x\n",
         "A",
         3,
         true,
         {},
         "Number of Tracks do not match! ( 3  4x)"},
        {"a count that matches", "[A]\nNUMTRACKS=3\n0=a\n", "A", 3, true, {{0, "a"}}, ""},
        {"values keep their blanks", "[A]\n0= spaced \n", "A", 1, true, {{0, " spaced "}}, ""},
        {"a value in Windows-1252", "[A]\n0=Caf\xe9\n", "A", 1, true, {{0, "Caf\u00e9"}}, ""},
        {"lines end at CR alone too", "[A]\r0=a\r1=b\r", "A", 2, true, {{0, "a"}, {1, "b"}}, ""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const CdPlayerTitles t = readCdPlayerIni(c.ini, c.id, c.tracks);
        EXPECT_EQ(t.found, c.found);
        EXPECT_EQ(t.titles, c.titles);
        EXPECT_EQ(t.message, QString::fromUtf8(c.message));
    }
}

TEST(CdPlayerIni, HugeLinesAndBinaryBytesReadWithoutHarm)
{
    QByteArray ini = "[A]\n0=" + QByteArray(100 * 1024, 'x') + "\n1=short\n";
    CdPlayerTitles t = readCdPlayerIni(ini, QStringLiteral("A"), 2);
    ASSERT_EQ(t.titles.size(), 2);
    EXPECT_EQ(t.titles[0].second.size(), 100 * 1024);
    QByteArray garbage;
    for (int i = 0; i < 70000; ++i)
        garbage += char((i * 7919) % 256);
    t = readCdPlayerIni("[A]\n" + garbage, QStringLiteral("A"), 99);
    EXPECT_TRUE(t.found);
    EXPECT_TRUE(readCdPlayerIni(garbage, QStringLiteral("A"), 3).titles.isEmpty());
}
