#include "platform/findfile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(FindFileNoCase, MatchesEveryPartWhateverItsCase)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkpath("Skins/Blue");
    for (const char *name : {"Skins/Blue/Main.BMP", "Skins/a.png", "Skins/A.png", "top.txt"})
        ASSERT_TRUE(QFile(dir.filePath(name)).open(QIODevice::WriteOnly)) << name;
    const struct
    {
        const char *asked, *found;
    } cases[] = {
        {"skins\\blue\\MAIN.bmp", "Skins/Blue/Main.BMP"},
        {"C:\\Skins\\Blue\\main.bmp", "Skins/Blue/Main.BMP"},
        {"/skins//blue/./main.bmp", "Skins/Blue/Main.BMP"},
        {"Skins/Blue/../../TOP.TXT", "top.txt"},
        {"Skins/a.png", "Skins/a.png"},
        {"Skins/Blue/gone.bmp", ""},
    };
    for (const auto &c : cases) {
        const QString expected = *c.found ? dir.path() + '/' + c.found : QString();
        EXPECT_EQ(findFileNoCase(dir.path(), c.asked), expected) << c.asked;
    }
}

TEST(FindFileNoCase, FirstExistingTriesEachNameInAnyCaseBeforeTheNext)
{
    QTemporaryDir dir;
    QDir(dir.path()).mkpath("Cover.gif"); // a folder is no picture
    for (const char *name : {"SONG.LRC", "song.lyr", "Album.JPG"})
        ASSERT_TRUE(QFile(dir.filePath(name)).open(QIODevice::WriteOnly)) << name;
    const QString at = dir.path() + '/';
    EXPECT_EQ(firstExistingNoCase(dir.path(), {"Song.lyr", "song.lrc"}), at + "song.lyr")
        << "a name in another case comes before the next name";
    EXPECT_EQ(firstExistingNoCase(at, {"x.bmp", "cover.gif", "album.jpg"}), at + "Album.JPG");
    EXPECT_EQ(firstExistingNoCase(dir.path(), {"gone.bmp"}), QString());

    const QString working = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(dir.path()));
    EXPECT_EQ(firstExistingNoCase(QString(), {"album.jpg"}), "Album.JPG")
        << "no folder: the working one, and the name stays bare";
    QDir::setCurrent(working);
}
