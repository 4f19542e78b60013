#include "player/playlistcontrol.h"
#include "support/deadline.h"
#include "support/fakes.h"
#include "support/oddfiles.h"
#include "support/playlistrig.h"
#include "support/temphome.h"

#include <QListWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class PlaylistControlTest : public ::testing::Test, protected PlaylistRig<FakeDialogs>
{
protected:
    PlaylistControlTest()
    {
        path = QStringLiteral("/start/");
        validExt = QStringLiteral("mp3 wav");
        control.setList(&list);
        QObject::connect(&control, &PlaylistControl::pathChosen, &control,
                         [this](const QString &folder) { savedPaths << folder; });
        QObject::connect(&control, &PlaylistControl::scanProgress, &control, [this](int entries) {
            progress << entries;
            // The list shows every entry found whenever the count does.
            EXPECT_EQ(list.count(), state.PlNames.size());
        });
        QObject::connect(&control, &PlaylistControl::cleared, &control,
                         [this] { ++coversCleared; });
    }

    QString labelName() const { return skin.labels.value(PlaylistControl::kNameLabel); }
    int labelCount() const { return skin.labels.value(PlaylistControl::kCountLabel, "-1").toInt(); }

    QStringList shown() const
    {
        QStringList texts;
        for (int i = 0; i < list.count(); ++i)
            texts << list.item(i)->text();
        return texts;
    }

    void setEntries(const QStringList &names)
    {
        state.PlNames = names;
        state.PlPath.clear();
        for (const QString &name : names)
            state.PlPath << "/m/" + name.toLower() + ".mp3";
        control.ShowPlaylist();
    }

    TempHome home;

    QStringList savedPaths;
    QList<int> progress;
    int coversCleared = 0;
};

} // namespace

TEST_F(PlaylistControlTest, FolderSavedClearedAndLoadedBackKeepsEveryPathAndAFailedSaveSaysSo)
{
    home.write("music/top.mp3", "");
    home.write("music/a/01_-_One.mp3", "");
    home.write("music/b/Two.WAV", "");
    home.write("lists/.keep", "");
    const QString music = home.file(QStringLiteral("music/"));

    dialogs.folderResult = home.file(QStringLiteral("music"));
    control.AddFromDir();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !control.isScanning(); }, 20000));
    const QStringList found = {music + "top.mp3", music + "a/01_-_One.mp3", music + "b/Two.WAV"};
    EXPECT_EQ(state.PlPath, found);
    EXPECT_EQ(shown(), QStringList({"top", "One", "Two"}));

    dialogs.saveResult = home.file(QStringLiteral("lists/mine"));
    control.PlSaveAs();
    EXPECT_EQ(labelName(), QStringLiteral("mine.m3u"));

    control.PlClear();
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(labelName(), QStringLiteral("untitled"));
    EXPECT_EQ(coversCleared, 1);

    dialogs.openResults = {{home.file(QStringLiteral("lists/mine.m3u"))}};
    control.PlLoad();
    EXPECT_EQ(state.PlPath, found);
    EXPECT_EQ(shown(), QStringList({"top.mp3", "One.mp3", "Two.WAV"}));
    EXPECT_EQ(labelName(), QStringLiteral("mine.m3u"));
    EXPECT_EQ(list.currentRow(), 0) << "the current entry is selected";

    // Each dialog starts where the last one ended, and "Path" is saved at once.
    const QString lists = home.file(QStringLiteral("lists/"));
    ASSERT_EQ(dialogs.calls.size(), 3);
    EXPECT_EQ(dialogs.calls[1].folder, music);
    EXPECT_EQ(dialogs.calls[2].folder, lists);
    EXPECT_EQ(savedPaths, QStringList({music, lists, lists}));
    EXPECT_TRUE(dialogs.messages.isEmpty());

    dialogs.saveResult = home.file(QStringLiteral("no/such/folder/list.m3u"));
    control.PlSaveAs();
    EXPECT_EQ(dialogs.messages, QStringList({"Unable to write Playlist! Is the file read-only?"}));
    EXPECT_EQ(labelName(), QStringLiteral("mine.m3u"));
}

TEST_F(PlaylistControlTest, LoadingClearsFirstAndPlaysWhenTheSettingsSaySo)
{
    const QString file = home.write(QStringLiteral("two.m3u"), "#EXTM3U\r\na.mp3\r\nb.mp3\r\n");
    const std::tuple<qint16, qint16, int, QList<int>> cases[] = {
        {0, 0, 3, {}}, {0, 1, 3, {2}}, {1, 1, 2, {1}}};
    for (const auto &[clear, play, entries, played] : cases) {
        setEntries({"Old"});
        state.CurTrack = 2;
        player.played.clear();
        clearFirst = clear;
        autoPlay = play;
        dialogs.openResults = {{file}};
        control.PlLoad();
        EXPECT_EQ(state.PlPath.size(), entries) << clear << play;
        EXPECT_EQ(list.count(), entries);
        EXPECT_EQ(player.played, played) << clear << play;
    }
}

// What each reader says of a name that is no file, or of one too big, is
// FileReaders' to check; here a pipe loaded leaves the list alone.
TEST_F(PlaylistControlTest, AListThatCannotBeReadSaysSoAndLeavesTheListAlone)
{
    const QList<OddFile> odd = makeOddFiles(home.path(), QStringLiteral("list.m3u"));
    ASSERT_EQ(odd.value(0).kind, QStringLiteral("pipe"));
    const QString pipe = odd[0].path;
    clearFirst = 1;
    autoPlay = 1;
    setEntries({"Old"});
    state.title = QStringLiteral("mine");
    const Deadline deadline("a pipe");
    dialogs.openResults = {{pipe}};
    control.PlLoad();
    EXPECT_EQ(
        dialogs.messages,
        QStringList{"Unable to read Playlist! It is not a file but a folder, pipe or device.\r" +
                    pipe});
    EXPECT_EQ(shown(), QStringList{"Old"});
    EXPECT_EQ(state.title, QStringLiteral("mine"));
    EXPECT_EQ(coversCleared, 0);
    EXPECT_TRUE(player.played.isEmpty());
}

TEST_F(PlaylistControlTest, ThePlayingEntryStandsOutApartFromTheSelection)
{
    const auto marked = [this] {
        QStringList bold;
        for (int i = 0; i < list.count(); ++i)
            if (list.item(i)->data(Qt::FontRole).value<QFont>().bold())
                bold << list.item(i)->text();
        return bold;
    };
    setEntries({"A", "B", "C", "D"});
    list.setCurrentRow(0);
    state.CurTrack = 3;
    control.markPlaying(2);
    EXPECT_EQ(marked(), QStringList{"C"});
    EXPECT_EQ(control.selectedIndex(), 0);

    control.RemoveEntry(); // A goes; C still plays
    EXPECT_EQ(marked(), QStringList{"C"});
    list.setCurrentRow(1);
    control.PlMoveEntry(+1);
    EXPECT_EQ(shown(), QStringList({"B", "D", "C"}));
    EXPECT_EQ(control.selectedIndex(), 2) << "the selection follows the moved entry";
    EXPECT_EQ(marked(), QStringList{"C"});
    cdMode = true;
    control.PlMoveEntry(-1);
    EXPECT_EQ(state.PlNames, QStringList({"B", "D", "C"})) << "a CD's tracks stay in order";
    cdMode = false;
    state.PlNames << "E";
    control.ShowPlaylist(); // rebuilt: the current entry is marked again
    EXPECT_EQ(marked(), QStringList{"C"});

    control.PlClear();
    setEntries({"F"});
    EXPECT_TRUE(marked().isEmpty()) << "nothing plays from a new list yet";
}

TEST_F(PlaylistControlTest, ListKeysAndDoubleClickRemoveAndPlayTheSelectedEntry)
{
    setEntries({"A", "B", "C"});
    list.resize(200, 200);
    list.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&list));
    list.setCurrentRow(1);
    QTest::keyClick(&list, Qt::Key_Delete);
    EXPECT_EQ(shown(), QStringList({"A", "C"}));
    EXPECT_EQ(labelCount(), 2);
    EXPECT_EQ(control.selectedIndex(), 1) << "the next entry is selected, ready for another Delete";

    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(player.played, QList<int>({2, 2}));

    const QRect first = list.visualItemRect(list.item(0));
    // A real double click: the first click, then the second.
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, first.center());
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, first.center());
    EXPECT_EQ(player.played, QList<int>({2, 2, 1}));
    EXPECT_EQ(state.CurTrack, 1);

    list.clearSelection();
    QTest::keyClick(&list, Qt::Key_Delete);
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(state.PlNames.size(), 2) << "nothing selected, nothing removed";
    EXPECT_EQ(player.played.size(), 3);
}

TEST_F(PlaylistControlTest, DropsAreAddedInTheOrderGivenWhileFoldersScan)
{
    for (int f = 0; f < 3; ++f)
        for (int i = 0; i < 20; ++i)
            home.write(QStringLiteral("drop/f%1/s%2.mp3").arg(f).arg(i, 2, 10, QLatin1Char('0')),
                       "");
    const QString single = home.write(QStringLiteral("single.wav"), "");
    const QString m3u = home.write(QStringLiteral("l.m3u"), "x.mp3\n");

    control.addPaths({home.file(QStringLiteral("drop")), single, m3u});
    EXPECT_TRUE(control.isScanning());
    EXPECT_TRUE(state.PlPath.isEmpty()) << "what follows a folder waits for its scan";
    ASSERT_TRUE(QTest::qWaitFor([this] { return !control.isScanning(); }, 20000));
    ASSERT_EQ(state.PlPath.size(), 62);
    EXPECT_EQ(state.PlPath.first(), home.file(QStringLiteral("drop/f0/s00.mp3")));
    EXPECT_EQ(state.PlPath[59], home.file(QStringLiteral("drop/f2/s19.mp3")));
    EXPECT_EQ(state.PlPath.mid(60), QStringList({single, home.file(QStringLiteral("x.mp3"))}));
    EXPECT_EQ(shown(), state.PlNames);
    EXPECT_EQ(labelCount(), 62);
    EXPECT_EQ(progress.value(progress.size() - 1), -1) << "the end of the scan is shown";
}
