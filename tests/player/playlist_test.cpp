#include "player/playlist.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>
#include <unistd.h>

TEST(FriendlyName, AppliesTheDisplayRulesAndKnowsPictures)
{
    const std::tuple<const char *, bool, const char *> cases[] = {
        {"05_My_Song.mp3", true, "05 My Song.mp3"},
        {"01 - Intro.mp3", true, "Intro.mp3"},
        {"/music/album/02_-_Song.mp3", true, "Song.mp3"},
        {"Song Title (03:45)", true, "Song Title"},
        {"/music/a.b.c.def.mp3", true, "a b c def.mp3"},
        {"name.abcde", true, "name abcde"},
        {".5-ab", true, "ab"},
        {"0-ab", true, "0-ab"},
        {"00-Title.mp3", true, "00-Title.mp3"},
        {"  7- Tail.mp3", true, "7- Tail.mp3"},
        {"AB-Title.mp3", true, "AB-Title.mp3"},
        {"05_My_Song.mp3", false, "05_My_Song.mp3"},
    };
    for (const auto &[path, friendly, expected] : cases)
        EXPECT_EQ(Playlist::FriendlyName(QString::fromUtf8(path), friendly),
                  QString::fromUtf8(expected))
            << path;
    // The picture test looks at the last four characters.
    const std::pair<const char *, bool> pictures[] = {
        {"A.GIF", true}, {"/x/b.Bmp", true}, {"a.jpeg", false}};
    for (const auto &[path, picture] : pictures)
        EXPECT_EQ(Playlist::IsPicture(QString::fromUtf8(path)), picture) << path;
}

TEST(PlaylistReader, ReadsEntriesByTheRulesOfEachTypeAndEncoding)
{
    using T = Playlist::ListType;
    const std::tuple<const char *, T, QByteArray, QStringList> cases[] = {
        {"extended lines skipped, blank lines kept",
         T::M3u,
         "#EXTM3U\n#EXTINF:12,x\n a.mp3 \n\nb.mp3\n",
         {"a.mp3", "", "b.mp3"}},
        {"CR LF and lone CR", T::M3u, "a.mp3\r\nb.mp3\rc.mp3\r\n", {"a.mp3", "b.mp3", "c.mp3"}},
        {"pls File keys only",
         T::Pls,
         "[playlist]\nFile1=a.mp3\nTitle1=A\nfile2=b.mp3\nFile3=c=d.mp3\nFile4\nNumberOfEntries="
         "4\n",
         {"a.mp3", "c=d.mp3"}},
        {"pls keeps text after the first =", T::Pls, "  File1= x.mp3\n", {" x.mp3"}},
        {"each line UTF-8 or Windows-1252",
         T::M3u,
         "\xEF\xBB\xBF"
         "Caf\xC3\xA9.mp3\r\nCaf\xE9.mp3\r\n\x80 \x93quoted\x94 \x8D.mp3\r\n",
         {QStringLiteral(u"Café.mp3"), QStringLiteral(u"Café.mp3"),
          QStringLiteral(u"€ “quoted” \u008D.mp3")}},
    };
    for (const auto &[name, type, bytes, expected] : cases)
        EXPECT_EQ(Playlist::readEntries(bytes, type), expected) << name;
}

TEST(PlaylistReader, ALongListStopsAtTheLimitAndAFullListTakesNothingMore)
{
    TempHome home;
    QByteArray names;
    for (int i = 0; i < 40000; ++i)
        names += "t" + QByteArray::number(i) + ".mp3\n";
    const QString list = home.write(QStringLiteral("big.m3u"), names);
    PlaylistState full;
    Playlist playlist(full);
    playlist.PlRead(list);
    ASSERT_EQ(full.PlPath.size(), Playlist::kMaxEntries);
    EXPECT_EQ(full.PlNames.size(), Playlist::kMaxEntries);
    EXPECT_TRUE(full.PlPath.last().endsWith(QStringLiteral("/t32765.mp3")));
    playlist.PlRead(list);
    EXPECT_EQ(full.PlPath.size(), Playlist::kMaxEntries);
}

TEST(PlaylistReader, ResolvesPathsOfEveryOrigin)
{
    TempHome home;
    const QString base = home.path() + QStringLiteral("/lists/");
    home.write(QStringLiteral("lists/Music/here.mp3"), "x");
    home.write(QStringLiteral("lists/rel.mp3"), "x");
    const QString tmpRoot = home.path().mid(1); // the home without its leading "/"
    const std::pair<QString, QString> cases[] = {
        {QStringLiteral("a.mp3"), base + QStringLiteral("a.mp3")},
        {QStringLiteral("sub\\b.mp3"), base + QStringLiteral("sub/b.mp3")},
        {QStringLiteral("/abs/c.mp3"), QStringLiteral("/abs/c.mp3")},
        // Drive letters: below the list's folder, then from the root, else as written.
        {QStringLiteral("D:\\Music\\here.mp3"), base + QStringLiteral("Music/here.mp3")},
        {QStringLiteral("\\Music\\here.mp3"), base + QStringLiteral("Music/here.mp3")},
        {QStringLiteral("C:\\") + QString(tmpRoot).replace('/', '\\') +
             QStringLiteral("\\lists\\rel.mp3"),
         home.path() + QStringLiteral("/lists/rel.mp3")},
        {QStringLiteral("D:\\Gone\\x.mp3"), QStringLiteral("D:/Gone/x.mp3")},
        {QStringLiteral("http://radio.example/stream.mp3"),
         QStringLiteral("http://radio.example/stream.mp3")},
        {QStringLiteral("file:///srv/m%20n.mp3"), QStringLiteral("/srv/m n.mp3")},
        {QStringLiteral("file:///srv/%231%20hit%3F%EF%BF%BF.mp3"),
         QStringLiteral(u"/srv/#1 hit?\uFFFF.mp3")},
    };
    for (const auto &[written, expected] : cases)
        EXPECT_EQ(Playlist::resolveEntry(written, base), expected) << written.toStdString();
}

TEST(PlaylistWriter, WritesRelativeBelowTheFolderDropsMarkedEntriesAndReadsBackEveryPath)
{
    TempHome home;
    const QString dir = home.path() + QStringLiteral("/lists");
    QDir().mkpath(dir);
    PlaylistState state;
    state.PlPath = {dir + "/a.mp3",
                    dir + "/sub/b.mp3",
                    QString(),
                    "/other/c.mp3",
                    dir + "/x**.mp3",
                    home.path() + "/LISTS/d.mp3",
                    QStringLiteral(u"/ü/é.mp3")};
    state.PlNames = state.PlPath;
    const QString file = dir + QStringLiteral("/out.m3u");
    EXPECT_EQ(Playlist(state).WritePL(file), QString());
    const QByteArray expected = "a.mp3\r\nsub/b.mp3\r\n/other/c.mp3\r\n" +
                                (home.path() + "/LISTS/d.mp3\r\n").toUtf8() +
                                QStringLiteral(u"/ü/é.mp3\r\n").toUtf8();
    EXPECT_EQ(readAll(file), expected);

    PlaylistState first;
    first.PlPath = {dir + "/a b.mp3", dir + "/deep/er/c.ogg", "/elsewhere/d.wav",
                    dir + QStringLiteral(u"/Été.mp3"), "http://radio.example/s",
                    // Names a plain line would change: each goes as a file URL.
                    dir + QStringLiteral(u"/ \uFFFFlead.mp3"), dir + "/#hash.mp3",
                    "//two/slashes.mp3", "/line\nbreak.mp3"};
    for (const QString &p : first.PlPath)
        first.PlNames << Playlist::FriendlyName(p, true);
    ASSERT_EQ(Playlist(first).WritePL(file), QString());
    PlaylistState second;
    Playlist(second).PlRead(file);
    EXPECT_EQ(second.PlPath, first.PlPath);
    EXPECT_EQ(second.PlNames, first.PlNames);
}

TEST(PlaylistWriter, FailureLeavesTheOldListAndSaysSo)
{
    TempHome home;
    PlaylistState state;
    state.PlPath = {QStringLiteral("/a.mp3")};
    state.PlNames = state.PlPath;
    // A folder where the file should go.
    const QString blocked = home.path() + QStringLiteral("/blocked.m3u");
    QDir().mkpath(blocked);
    EXPECT_EQ(Playlist(state).WritePL(blocked),
              QStringLiteral("Unable to write Playlist! Is the file read-only?"));
    EXPECT_TRUE(QFileInfo(blocked).isDir());
    // An existing list in a folder we may not write to keeps its bytes.
    const QString kept = home.write(QStringLiteral("ro/kept.m3u"), "old.mp3\r\n");
    QFile::setPermissions(home.path() + QStringLiteral("/ro"),
                          QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    const QString message = Playlist(state).WritePL(kept);
    if (::geteuid() != 0) {
        EXPECT_FALSE(message.isEmpty());
    }
    if (!message.isEmpty()) {
        EXPECT_EQ(readAll(kept), QByteArray("old.mp3\r\n"));
    }
    QFile::setPermissions(home.path() + QStringLiteral("/ro"),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

TEST(PlaylistEdits, MoveRemoveAndClearKeepBothListsInStep)
{
    PlaylistState state;
    state.PlNames = {"A", "B", "C"};
    state.PlPath = {"/a", "/b", "/c"};
    state.CurTrack = 2;
    Playlist playlist(state);
    struct Move
    {
        int direction, selected, expectedSelection;
        QStringList names;
    };
    const Move moves[] = {
        {+1, 0, 1, {"B", "A", "C"}}, {+1, 2, 2, {"B", "A", "C"}},   {-1, 0, 0, {"B", "A", "C"}},
        {-1, 2, 1, {"B", "C", "A"}}, {+1, -1, -1, {"B", "C", "A"}}, {2, 0, 0, {"B", "C", "A"}},
    };
    for (const Move &m : moves) {
        EXPECT_EQ(playlist.PlMoveEntry(m.direction, m.selected), m.expectedSelection);
        EXPECT_EQ(state.PlNames, m.names);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(state.PlPath[i], "/" + state.PlNames[i].toLower());
    }
    EXPECT_EQ(state.CurTrack, 2);
    playlist.RemoveEntry(7);
    playlist.RemoveEntry(-1);
    playlist.RemoveEntry(1);
    EXPECT_EQ(state.PlNames, QStringList({"B", "A"}));
    EXPECT_EQ(state.PlPath, QStringList({"/b", "/a"}));
    playlist.PlClear();
    EXPECT_TRUE(state.PlNames.isEmpty() && state.PlPath.isEmpty());
    EXPECT_EQ(state.CurTrack, 1);
    EXPECT_EQ(state.title, QStringLiteral("untitled"));
}
