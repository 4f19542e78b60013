#include "core/commandline.h"
#include "core/placement.h"
#include "core/programfolder.h"

#include "support/temphome.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

TEST(CleanCmdLine, TurnsWhatLaunchersPassIntoOnePath)
{
    const QString cwd = QStringLiteral("/home/ann/Music");
    const std::pair<QStringList, QString> cases[] = {
        {{}, {}},
        {{"song.mp3"}, "/home/ann/Music/song.mp3"},
        {{"../Lists/best.m3u"}, "/home/ann/Lists/best.m3u"},
        {{"My", "Song.mp3"}, "/home/ann/Music/My Song.mp3"},
        {{"\"/tmp/a b.mp3\""}, "/tmp/a b.mp3"},
        {{"file:///home/ann/Music/Caf%C3%A9%20D.mp3"}, "/home/ann/Music/Café D.mp3"},
        {{"http://radio.example:8000/live"}, "http://radio.example:8000/live"},
    };
    for (const auto &[names, expected] : cases)
        EXPECT_EQ(CleanCmdLine(names, cwd), expected) << names.join(' ').toStdString();
}

TEST(KeepOnScreen, MovesOnlyWindowsThatCannotBeReached)
{
    const QList<QRect> two = {QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)};
    const QSize size(400, 160);
    EXPECT_EQ(keepOnScreen({2500, 500}, size, two), QPoint(2500, 500));
    EXPECT_EQ(keepOnScreen({-300, 10}, size, two), QPoint(-300, 10)) << "partly visible stays";
    EXPECT_EQ(keepOnScreen({5000, 500}, size, two), QPoint(2800, 500));
    EXPECT_EQ(keepOnScreen({-2000, -900}, size, two), QPoint(0, 0));
    EXPECT_EQ(keepOnScreen({-2000, -900}, size, {}), QPoint(-2000, -900));
}

TEST(ProgramFolder, SeedsShippedFilesWithoutOverwritingTheUsers)
{
    TempHome home;
    home.write(QStringLiteral("shipped/skins/default.skin"), "shipped");
    home.write(QStringLiteral("shipped/skins/player.bmp"), "bmp");
    home.write(QStringLiteral("shipped/nocover.bmp"), "cover");
    const ProgramFolder folder(home.file(QStringLiteral("data/velto")));
    home.write(QStringLiteral("data/velto/skins/default.skin"), "mine");

    EXPECT_TRUE(folder.prepare(home.file(QStringLiteral("shipped"))).isEmpty());
    auto read = [&](const QString &name) {
        QFile f(folder.file(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
    };
    EXPECT_EQ(read(QStringLiteral("skins/default.skin")), "mine");
    EXPECT_EQ(read(QStringLiteral("skins/player.bmp")), "bmp");
    EXPECT_EQ(read(QStringLiteral("nocover.bmp")), "cover");
}

TEST(ProgramFolder, UncreatableFolderGivesOneMessage)
{
    TempHome home;
    // A file where the folder belongs stops even root, unlike permissions.
    home.write(QStringLiteral("blocked"), "a file");
    const ProgramFolder folder(home.file(QStringLiteral("blocked/velto")));
    EXPECT_TRUE(
        folder.prepare(QString()).startsWith(QStringLiteral("Velto cannot create its folder\r")));
}
