#include "player/folderscan.h"
#include "support/temphome.h"

#include <QFile>
#include <gtest/gtest.h>
#include <unistd.h>

TEST(FolderScan, TakesListedExtensionsBreadthFirstPastLinkLoopsUntilTheListIsFull)
{
    const QString list = QStringLiteral("mp2 mp3 mpa wma asf wav mid rmi avi mov qt").toUpper();
    const std::pair<const char *, bool> cases[] = {
        {"b.Wav", true}, {"c.ogg", false}, {"d.mp", true},      {"f.a w", true},
        {"mp3", true},   {"noext", false}, {"trailing.", true}, {"x.mp3.txt", false},
    };
    for (const auto &[name, accepted] : cases)
        EXPECT_EQ(FolderWalk::accepts(QString::fromUtf8(name), list), accepted) << name;

    // The walk: breadth first, files before subfolders, past link loops, dangling
    // links and closed folders, until the list is full.
    TempHome home;
    home.write(QStringLiteral("root/b.mp3"), "x");
    home.write(QStringLiteral("root/A_Song.mp3"), "x");
    home.write(QStringLiteral("root/notes.txt"), "x");
    home.write(QStringLiteral("root/.hidden.mp3"), "x");
    home.write(QStringLiteral("root/x/deep/d.mp3"), "x");
    home.write(QStringLiteral("root/x/c.wav"), "x");
    home.write(QStringLiteral("root/y/e.mid"), "x");
    home.write(QStringLiteral("root/closed/f.mp3"), "x");
    const QString root = home.file(QStringLiteral("root"));
    ASSERT_TRUE(QFile::link(root, root + QStringLiteral("/x/up")));
    ASSERT_TRUE(QFile::link(root + QStringLiteral("/x"), root + QStringLiteral("/x/self")));
    ASSERT_TRUE(QFile::link(root + QStringLiteral("/gone"), root + QStringLiteral("/dangling")));
    ASSERT_TRUE(QFile::link(root + QStringLiteral("/gone.mp3"), root + QStringLiteral("/g.mp3")));
    QFile::setPermissions(root + QStringLiteral("/closed"), QFileDevice::WriteOwner);
    PlaylistState state;
    const int found = FolderScan::scanAll(state, root, QStringLiteral("mp3 wav mid"));
    QFile::setPermissions(root + QStringLiteral("/closed"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QStringList names = {"A Song", "b", "c", "e", "d"};
    QStringList paths = {root + "/A_Song.mp3", root + "/b.mp3", root + "/x/c.wav",
                         root + "/y/e.mid", root + "/x/deep/d.mp3"};
    if (::geteuid() == 0) { // permissions do not stop root
        names.insert(2, "f");
        paths.insert(2, root + "/closed/f.mp3");
    }
    EXPECT_EQ(found, paths.size());
    EXPECT_EQ(state.PlNames, names);
    EXPECT_EQ(state.PlPath, paths);

    // A list one short of full takes one more and stops.
    state.PlNames = QStringList(Playlist::kMaxEntries - 1, QString());
    state.PlPath = state.PlNames;
    FolderScan::scanAll(state, root, QStringLiteral("mp3 wav mid"));
    EXPECT_EQ(state.PlPath.size(), Playlist::kMaxEntries);
    EXPECT_EQ(state.PlNames.size(), Playlist::kMaxEntries);
}
