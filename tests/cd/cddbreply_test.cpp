#include "cd/cddbreply.h"

#include <gtest/gtest.h>

TEST(CddbReply, FieldsRunToTheNextCarriageReturn)
{
    const QString reply =
        QStringLiteral("210 rock 1234 follows\r\nDTITLE=A / B\r\nTTITLE0=One\r\n"
                       "TTITLE1=\r\nTTITLE10=Ten\r\nXTTITLE2=Two\r\nTTITLE3=Three");
    const std::pair<const char *, const char *> cases[] = {
        {"DTITLE", "A / B"}, {"TTITLE0", "One"}, {"TTITLE1", ""}, // empty
        {"TTITLE10", "Ten"},                                      // "TTITLE1=" is not "TTITLE10="
        {"TTITLE2", "Two"}, // found inside another word, as a plain search finds it
        {"TTITLE3", ""},    // the value runs to the end without a carriage return
        {"TTITLE4", ""},    // absent
    };
    for (const auto &[key, value] : cases)
        EXPECT_EQ(CDDBField(reply, QLatin1String(key)), QLatin1String(value)) << key;
    EXPECT_EQ(CDDBField(QStringLiteral("a=1\nb=2\r"), QStringLiteral("a")),
              QStringLiteral("1\nb=2"))
        << "only a carriage return ends a value";
}

TEST(CddbReply, QueryAnswers)
{
    using K = CddbMatch::Kind;
    const std::tuple<const char *, K, const char *> cases[] = {
        {"200 rock 0a0b0c03 The Band / First Album\r\n", K::Found, "rock"},
        {"200 misc", K::Found, "misc"},
        {"header\r\n200 jazz x", K::Found, "jazz"}, // anywhere in the reply
        {"201 several\r\n", K::Multiple, ""},
        {"201 and 200 soul y", K::Found, "soul"}, // a match wins
        {"202 No match for disc ID 0a0b0c03.\r\n", K::NotFound, ""},
        {"211 Found inexact matches, list follows\r\nrock 1 x\r\n.\r\n", K::NotFound, ""},
    };
    for (const auto &[reply, kind, category] : cases) {
        const CddbMatch m = readQueryReply(QString::fromLatin1(reply));
        EXPECT_EQ(std::pair(m.kind, m.category), std::pair(kind, QString::fromLatin1(category)))
            << reply;
    }
}

TEST(CddbReply, ArtistAndAlbumFromTheDiscTitle)
{
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"DTITLE=The Band / First Album\r\n", "The Band", "First Album"},
        {"DTITLE= Solo  \r\n", "Solo", "Solo"},
        {"DTITLE=A / B / C\r\n", "A", "B / C"},
        {"DTITLE=A/B\r\n", "A/B", "A/B"},
    };
    for (const auto &[reply, artist, album] : cases) {
        const CddbDiscEntry e = readDiscReply(QString::fromLatin1(reply), 0);
        EXPECT_EQ(std::pair(e.artist, e.album),
                  std::pair(QString::fromLatin1(artist), QString::fromLatin1(album)))
            << reply;
    }
}

TEST(CddbReply, EachLineIsUtf8ElseLatin1)
{
    EXPECT_EQ(decodeCddbReply("TTITLE0=Caf\xc3\xa9\r\nTTITLE1=Caf\xe9\r\nTTITLE2=\xe2\x82\xac\r\n"),
              QStringLiteral("TTITLE0=Caf\u00e9\r\nTTITLE1=Caf\u00e9\r\nTTITLE2=\u20ac\r\n"));
}
