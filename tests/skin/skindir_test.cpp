#include "skin/skindir.h"

#include "platform/rawnames.h"
#include "skin/skinimport.h"

#include "support/printers.h"
#include "support/temphome.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

QStringList texts(const QList<SkinDirEntry> &entries)
{
    QStringList t;
    for (const SkinDirEntry &e : entries)
        t << e.text;
    return t;
}

} // namespace

TEST(SkinDir, TypeFilterListsEachSkinUnderTheWordsOfItsTypeList)
{
    // Each header and the filters, of ALL PLAYER CALCULATOR KARAOKE FAVORITE, that list it.
    const std::tuple<QByteArray, QStringList> cases[] = {
        {"\"Velto Skin/PLAYER,CALCULATOR\",\"Two\"", {"ALL", "PLAYER", "CALCULATOR"}},
        // The older format is a player skin, whatever the case of its signature.
        {"\"NE-ORB SKIN\",\"Old\"", {"ALL", "PLAYER"}},
        {"\"Ne-Orb Skin/KARAOKE\",\"Old typed\"", {"ALL", "KARAOKE"}},
        {"\"Velto Skin\",\"Untyped\"", {"ALL"}},
        // The word is found anywhere in the type text, in any case.
        {"\"Velto Skin/karaoke player\",\"Lower\"", {"ALL", "PLAYER", "KARAOKE"}},
        // Signatures are exact otherwise.
        {"\"velto skin/PLAYER\",\"Wrong case\"", {}},
    };
    const QStringList filters = {"ALL", "PLAYER", "CALCULATOR", "KARAOKE", "FAVORITE"};
    for (const auto &[header, listedUnder] : cases) {
        const SkinDirHeader parsed = parseSkinDirHeader(header);
        for (const QString &filter : filters)
            EXPECT_EQ(skinListed(parsed, filter), listedUnder.contains(filter))
                << header.constData() << " under " << filter.toStdString();
    }
}

// How the bytes decode is decodeText's (Text tests), shared with the skin reader.
TEST(SkinDir, HeaderGivesSignatureTypeAndDisplayName)
{
    const std::tuple<QByteArray, QString, QString, QString> cases[] = {
        {"Velto Skin/A/B,Name, more, fields", "Velto Skin", "A/B", "Name"},
        {"\"Velto Skin/PLAYER\"\r\n\"Next line\"", "Velto Skin", "PLAYER", ""},
        {"\"Ne-Orb Skin\",\"Old, with comma\"", "Ne-Orb Skin", "PLAYER", "Old, with comma"},
    };
    for (const auto &[line, signature, type, name] : cases) {
        const SkinDirHeader h = parseSkinDirHeader(line);
        EXPECT_EQ(std::tuple(h.signature, h.type, h.displayName), std::tuple(signature, type, name))
            << line.constData();
    }
}

TEST(SkinDir, EntryIsCutAtItsFirstSeparator)
{
    const std::tuple<QString, QString, QString, QString> cases[] = {
        {"slate.skin", "Velto Slate", "SLATE > Velto Slate", "SLATE.skin"},
        {"Odd.SKIN", "A > B > C", "ODD > A > B > C", "ODD.skin"},
        {"no-extension", "", "NO-EXTENSION > ", "NO-EXTENSION.skin"},
        {"straße.skin", "de", "STRASSE > de", "STRASSE.skin"},
    };
    for (const auto &[file, display, entry, back] : cases) {
        EXPECT_EQ(skinEntry(file, display), entry);
        EXPECT_EQ(skinFileOfEntry(entry), back);
    }
    EXPECT_EQ(skinFileOfEntry(QStringLiteral("NOSEPARATOR")), QStringLiteral("NOSEPARATOR.skin"));
}

TEST(SkinDir, ReadsTheFolderInNameOrderAndSkipsWhatIsNoSkinFile)
{
    TempHome dir;
    const QString f = dir.path();
    dir.write("b.skin", "\"Velto Skin/PLAYER\",\"Bee\"\r\n1,0\r\n");
    dir.write("A.SKIN", "\n\n  \"Velto Skin/CALCULATOR,PLAYER\",\"Ay\"\n");
    dir.write("c.skin", "\"Ne-Orb Skin\",\"Sea\"");
    dir.write("d.skin", "\"Not A Skin\",\"Dee\"");
    dir.write("e.txt", "\"Velto Skin/PLAYER\",\"Not listed\"");
    dir.write("empty.skin", "");
    // Folders, links to nowhere and devices are openRegularFile's to refuse (ReadFile tests).

    EXPECT_EQ(texts(ReadSkinDir(f, QStringLiteral("ALL"))),
              QStringList({"A > Ay", "B > Bee", "C > Sea"}));
    EXPECT_EQ(texts(ReadSkinDir(f, QStringLiteral("CALCULATOR"))), QStringList({"A > Ay"}));
    const QList<SkinDirEntry> players = ReadSkinDir(f, QStringLiteral("PLAYER"));
    ASSERT_EQ(players.size(), 3);
    EXPECT_EQ(players[0].file, f + "/A.SKIN");
    EXPECT_TRUE(ReadSkinDir(f, QStringLiteral("FAVORITE")).isEmpty());
    // A favourite of another type is listed; one that is no skin is not.
    EXPECT_EQ(texts(ReadSkinDir(f, QStringLiteral("FAVORITE"),
                                {skinPathKey(f + "/./c.skin"), skinPathKey(f + "/d.skin")})),
              QStringList({"C > Sea"}));
    EXPECT_EQ(texts(ReadSkinDir(f, QStringLiteral("CALCULATOR"), {skinPathKey(f + "/b.skin")})),
              QStringList({"A > Ay"}))
        << "being a favourite adds a skin to no other type";
}

TEST(SkinDir, NamesThatAreNotUtf8AreReportedNotListed)
{
    // Qt can neither list nor open such a name, so the browser can only say so.
    TempHome dir;
    for (const QByteArray &name :
         {QByteArray("caf\xE9.skin"), QByteArray("na\xEFve.SKIN"), QByteArray("caf\xE9.png")}) {
        FILE *raw = std::fopen((QFile::encodeName(dir.path()) + '/' + name).constData(), "wb");
        ASSERT_NE(raw, nullptr);
        std::fputs("\"Velto Skin/PLAYER\",\"Latin\"\n", raw);
        std::fclose(raw);
    }
    dir.write(QStringLiteral("fine.skin"), "\"Velto Skin/PLAYER\",\"Fine\"\n");
    EXPECT_EQ(texts(ReadSkinDir(dir.path(), QStringLiteral("ALL"))), QStringList({"FINE > Fine"}));
    QStringList bad = undecodableNames(dir.path(), QStringLiteral("*.skin"));
    bad.sort();
    EXPECT_EQ(bad, QStringList({QString::fromUtf8("caf\xC3\xA9.skin"),
                                QString::fromUtf8("na\xC3\xAFve.SKIN")}));
    EXPECT_EQ(undecodableNames(dir.path(), QStringLiteral("*.skin"), 1).size(), 1);
}
