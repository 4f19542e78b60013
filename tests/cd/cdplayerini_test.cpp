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

TEST(CdPlayerIni, SectionsAndKeys)
{
    const std::tuple<QByteArray, QString, int, bool, Titles, QString> cases[] = {
        {kFile, "4D5E6F", 3, true, {{0, "Opening"}, {2, "Closing = Last"}, {1, "Middle"}}, ""},
        {kFile, "ABCDEF", 3, false, {}, ""},
        {"[abc1]  \n0=One\n", "ABC1", 1, true, {{0, "One"}}, ""}, // other case, blanks after
        {"  [ABC1]\n0=One\n", "ABC1", 1, false, {}, ""},          // blanks before: no header
        {"[A]\n0=a\n[B]\n1=b\n", "A", 2, true, {{0, "a"}}, ""},
        {"[A]\n3=x\n2=y\n", "A", 3, true, {{2, "y"}}, ""}, // past the last track
        // A key that is no number names track 1, and a later 0= again.
        {"[A]\nEntryType=1\n0=First\n", "A", 3, true, {{0, "1"}, {0, "First"}}, ""},
        // Keys compare in upper case; a wrong count stops the reading, titles before it stay.
        {"[A]\n0=a\nNumTracks=14\n1=b\n",
         "A",
         12,
         true,
         {{0, "a"}},
         "Number of Tracks do not match! ( 12 14)"},
        {"[A]\n0= spaced \n", "A", 1, true, {{0, " spaced "}}, ""},
        {"[A]\r0=a\r1=b\r", "A", 2, true, {{0, "a"}, {1, "b"}}, ""},
    };
    for (const auto &[ini, id, tracks, found, titles, message] : cases) {
        SCOPED_TRACE(ini.left(30).toStdString());
        const CdPlayerTitles t = readCdPlayerIni(ini, id, tracks);
        EXPECT_EQ(std::tuple(t.found, t.titles, t.message), std::tuple(found, titles, message));
    }
}
