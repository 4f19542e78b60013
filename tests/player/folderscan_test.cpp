#include "player/folderscan.h"
#include "support/temphome.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <gtest/gtest.h>
#include <unistd.h>

TEST(FolderScan, ExtensionTestFindsTheExtensionInsideTheListText)
{
    const QString list = QStringLiteral("mp2 mp3 mpa wma asf wav mid rmi avi mov qt").toUpper();
    const std::pair<const char *, bool> cases[] = {
        {"a.mp3", true},    {"A.MP3", true},      {"b.Wav", true},     {"c.ogg", false},
        {"d.mp", true},     {"e.a", true},        {"f.a w", true},     {"g.txt", false},
        {"mp3", true},      {"noext", false},     {"trailing.", true}, {"x.flac", false},
        {"x.tar.qt", true}, {"x.mp3.txt", false},
    };
    for (const auto &[name, accepted] : cases)
        EXPECT_EQ(FolderWalk::accepts(QString::fromUtf8(name), list), accepted) << name;
}

TEST(FolderScan, WalksBreadthFirstWithFilesBeforeSubfolders)
{
    TempHome home;
    home.write(QStringLiteral("root/b.mp3"), "x");
    home.write(QStringLiteral("root/A_Song.mp3"), "x");
    home.write(QStringLiteral("root/notes.txt"), "x");
    home.write(QStringLiteral("root/.hidden.mp3"), "x");
    home.write(QStringLiteral("root/x/deep/d.mp3"), "x");
    home.write(QStringLiteral("root/x/c.wav"), "x");
    home.write(QStringLiteral("root/y/e.mid"), "x");
    const QString root = home.file(QStringLiteral("root"));
    PlaylistState state;
    EXPECT_EQ(FolderScan::scanAll(state, root, QStringLiteral("mp3 wav mid")), 5);
    EXPECT_EQ(state.PlNames, QStringList({"A Song", "b", "c", "e", "d"}));
    EXPECT_EQ(state.PlPath, QStringList({root + "/A_Song.mp3", root + "/b.mp3", root + "/x/c.wav",
                                         root + "/y/e.mid", root + "/x/deep/d.mp3"}));
}

TEST(FolderScan, SurvivesLinkLoopsDanglingLinksAndClosedFolders)
{
    TempHome home;
    home.write(QStringLiteral("root/a.mp3"), "x");
    home.write(QStringLiteral("root/sub/b.mp3"), "x");
    home.write(QStringLiteral("root/closed/c.mp3"), "x");
    const QString root = home.file(QStringLiteral("root"));
    ASSERT_TRUE(QFile::link(root, root + QStringLiteral("/sub/up")));
    ASSERT_TRUE(QFile::link(root + QStringLiteral("/sub"), root + QStringLiteral("/sub/self")));
    ASSERT_TRUE(QFile::link(root + QStringLiteral("/gone"), root + QStringLiteral("/dangling")));
    ASSERT_TRUE(QFile::link(root + QStringLiteral("/gone.mp3"), root + QStringLiteral("/x.mp3")));
    QFile::setPermissions(root + QStringLiteral("/closed"), QFileDevice::WriteOwner);

    PlaylistState state;
    FolderScan::scanAll(state, root, QStringLiteral("mp3"));
    QStringList expected = {root + "/a.mp3", root + "/sub/b.mp3"};
    if (::geteuid() == 0) // permissions do not stop root
        expected.insert(1, root + "/closed/c.mp3");
    EXPECT_EQ(state.PlPath, expected);
    QFile::setPermissions(root + QStringLiteral("/closed"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

TEST(FolderScan, RunsOnTheEventLoopAndCanBeCancelled)
{
    TempHome home;
    for (int f = 0; f < 20; ++f)
        for (int i = 0; i < 30; ++i)
            home.write(QStringLiteral("t/f%1/s%2.mp3").arg(f).arg(i), "");
    PlaylistState state;
    FolderScan scan(state);
    QSignalSpy finished(&scan, &FolderScan::finished);
    scan.start(home.file(QStringLiteral("t")), QStringLiteral("mp3"));
    EXPECT_TRUE(scan.isRunning());
    EXPECT_TRUE(state.PlPath.isEmpty()); // nothing before the event loop runs
    ASSERT_TRUE(finished.wait(10000));
    EXPECT_EQ(state.PlPath.size(), 600);
    EXPECT_EQ(state.PlNames.size(), 600);
    EXPECT_FALSE(scan.isRunning());

    PlaylistState other;
    FolderScan second(other);
    QSignalSpy done(&second, &FolderScan::finished);
    second.start(home.file(QStringLiteral("t")), QStringLiteral("mp3"));
    second.cancel();
    EXPECT_EQ(done.count(), 1);
    EXPECT_FALSE(second.isRunning());
    QCoreApplication::processEvents();
    EXPECT_TRUE(other.PlPath.isEmpty());
}

TEST(FolderScan, StopsWhenTheListIsFull)
{
    TempHome home;
    home.write(QStringLiteral("r/a.mp3"), "");
    home.write(QStringLiteral("r/b.mp3"), "");
    PlaylistState state;
    for (int i = 0; i < Playlist::kMaxEntries - 1; ++i) {
        state.PlNames << QString();
        state.PlPath << QString();
    }
    FolderScan::scanAll(state, home.file(QStringLiteral("r")), QStringLiteral("mp3"));
    EXPECT_EQ(state.PlPath.size(), Playlist::kMaxEntries);
    EXPECT_EQ(state.PlNames.size(), Playlist::kMaxEntries);
}
