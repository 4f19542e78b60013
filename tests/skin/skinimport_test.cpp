#include "skin/skinimport.h"

#include "skin/skinreader.h"

#include "support/temphome.h"
#include "support/testbytes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

TEST(SkinImport, ConvertChangesOnlyTheSignature)
{
    const std::tuple<QByteArray, QByteArray> cases[] = {
        {"\"Ne-Orb Skin\",\"Old\"\r\n1,0\r\n", "\"Velto Skin/PLAYER\",\"Old\"\r\n1,0\r\n"},
        {"\xEF\xBB\xBF\n  \"Ne-Orb Skin/KARAOKE\",\"x\xE9\"\n",
         "\xEF\xBB\xBF\n  \"Velto Skin/PLAYER\",\"x\xE9\"\n"},
        // Nothing to import.
        {"\"Velto Skin/PLAYER\",\"New\"\n", ""},
        {"\"ne-orb skin\",\"Case\"\n", ""},
    };
    for (const auto &[in, out] : cases)
        EXPECT_EQ(SkinImport::convert(in), out) << in.constData();
}

TEST(SkinImport, WritesTheCopyBesideTheOriginalAndNeverOverwrites)
{
    TempHome dir;
    const QByteArray older = "\"Ne-Orb Skin\",\"Old\"\r\n1,0\r\n\"Main\",\"m.png\"\r\n";
    const QString original = dir.write(QStringLiteral("Old Skin.skin"), older);
    EXPECT_TRUE(SkinImport::isOlderFormat(original));

    const SkinImport::Result first = SkinImport::importSkin(original);
    EXPECT_TRUE(first.message.isEmpty());
    EXPECT_EQ(first.file, dir.file(QStringLiteral("Old Skin-velto.skin")));
    EXPECT_EQ(readAll(original), older) << "the original is kept as it was";
    EXPECT_FALSE(SkinImport::isOlderFormat(first.file));
    QFile copy(first.file);
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    const SkinDescription header = readSkinHeader(copy);
    EXPECT_TRUE(header.accepted);
    EXPECT_EQ(header.displayName, QStringLiteral("Old"));

    // Importing again uses the same copy; a different file of that name is kept.
    EXPECT_EQ(SkinImport::importSkin(original).file, first.file);
    dir.write(QFileInfo(first.file).fileName(), "someone else's skin");
    EXPECT_EQ(SkinImport::importSkin(original).file,
              dir.file(QStringLiteral("Old Skin-velto-2.skin")));
    EXPECT_EQ(readAll(first.file), QByteArray("someone else's skin"));
}

TEST(SkinImport, FailuresSayWhyAndWriteNothing)
{
    TempHome dir;
    const QString newer = dir.write(QStringLiteral("new.skin"), "\"Velto Skin\",\"N\"\n");
    EXPECT_FALSE(SkinImport::importSkin(newer).message.isEmpty());
    EXPECT_FALSE(SkinImport::importSkin(dir.file(QStringLiteral("none.skin"))).message.isEmpty());
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList({"new.skin"}));
}
