#include "app/frmneorb.h"
#include "player/frmqfind.h"

#include "support/recordingplayer.h"
#include "support/shippedwindow.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QRadioButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class QuickFindWindow : public ::testing::Test
{
protected:
    QuickFindWindow()
    {
        state.PlNames = {"Zebra", "Café del Mar", "Bear", "beatles - help", "", "CAFE noir", "Bee"};
        player.listen(window);
        window.Form_Load();
        window.show();
        text = window.findChild<QLineEdit *>(QStringLiteral("Text1"));
        list1 = window.findChild<QListView *>(QStringLiteral("List1"));
        list2 = window.findChild<QListView *>(QStringLiteral("List2"));
        for (QRadioButton *option : window.findChildren<QRadioButton *>())
            (option->text() == QStringLiteral("&Starts with") ? startsWith : anywhere) = option;
    }

    static QString selected(const QListView *list)
    {
        return list->currentIndex().data().toString();
    }

    PlaylistState state;
    RecordingPlayer player{state};
    qint16 autoClose = 0;
    frmQFind window{state, autoClose};
    QLineEdit *text = nullptr;
    QListView *list1 = nullptr;
    QListView *list2 = nullptr;
    QRadioButton *anywhere = nullptr;
    QRadioButton *startsWith = nullptr;
};

// The real main window on the shipped skins, for the parts of the playlist it wires.
class MainWindowPlaylist : public ::testing::Test, protected ShippedWindow
{
protected:
    MainWindowPlaylist() { start(); }
};

} // namespace

// What matches and in which order is QuickFind's; here the keys of the window.
TEST_F(QuickFindWindow, ArrowsStayInsideTheMatchesAndReturnPlaysByName)
{
    ASSERT_TRUE(text && list1 && list2 && anywhere && startsWith);
    EXPECT_TRUE(list2->isVisible());
    EXPECT_FALSE(list1->isVisible());
    QTest::keyClicks(text, QStringLiteral("cafe"));
    ASSERT_EQ(list2->model()->rowCount(), 2);
    QTest::keyClick(text, Qt::Key_Up);
    EXPECT_EQ(selected(list2), QStringLiteral("Café del Mar"));
    QTest::keyClick(text, Qt::Key_Down);
    QTest::keyClick(text, Qt::Key_Down);
    EXPECT_EQ(selected(list2), QStringLiteral("CAFE noir"));
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(player.played, QList<int>({6}));
    EXPECT_TRUE(window.isVisible());

    // An entry that moved in the playlist is found by its name.
    text->setText(QStringLiteral("zebra"));
    state.PlNames.removeFirst(); // "Zebra" was entry 1
    state.PlNames << QStringLiteral("Zebra");
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(player.played, QList<int>({6, 7}));
    state.PlNames.removeLast();
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(player.played.size(), 2) << "a name no longer in the list plays nothing";

    startsWith->click();
    EXPECT_TRUE(list1->isVisible());
    EXPECT_FALSE(list2->isVisible());
}

TEST_F(QuickFindWindow, ClosesAfterPlayingOnlyWhenAskedAndEscapeNeverPlays)
{
    autoClose = 1;
    const QRect first = list2->visualRect(list2->model()->index(1, 0));
    QTest::mouseClick(list2->viewport(), Qt::LeftButton, {}, first.center());
    QTest::mouseDClick(list2->viewport(), Qt::LeftButton, {}, first.center());
    EXPECT_EQ(player.played, QList<int>({4})) << "the second name in order is beatles - help";
    EXPECT_FALSE(window.isVisible());

    window.Form_Load();
    window.show();
    EXPECT_TRUE(text->text().isEmpty());
    QTest::keyClicks(text, QStringLiteral("zeb"));
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(player.played.size(), 1);
}

// The order and the scan of what is dropped are the playlist's tests; here
// the window takes local files and folders and refuses anything else.
TEST_F(MainWindowPlaylist, TheWindowTakesDroppedFilesAndRefusesText)
{
    home.write(QStringLiteral("music/album/a.mp3"), "");
    const QString single = home.write(QStringLiteral("one.mp3"), "");
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(home.file(QStringLiteral("music"))),
                  QUrl(QStringLiteral("https://example.org/x.mp3")), QUrl::fromLocalFile(single)});
    // Qt lets a drop through only while a real drag runs, so the events go to
    // the window's own handler.
    QObject *target = window;
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    target->event(&enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    target->event(&drop);
    EXPECT_TRUE(drop.isAccepted());

    QMimeData text;
    text.setText(QStringLiteral("not a file"));
    QDragEnterEvent refused(QPoint(10, 10), Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
    target->event(&refused);
    EXPECT_FALSE(refused.isAccepted());
    ASSERT_TRUE(QTest::qWaitFor([&] { return velto->playlist().PlPath.size() == 2; }, 20000));
    EXPECT_EQ(window->skin().label(13), QStringLiteral("2"));
}

// Stop (command 10) ends a scan the same way; clearing ends it in
// PlaylistControl's test.
TEST_F(MainWindowPlaylist, EscapeEndsAFolderScanAndTheChosenFolderIsStored)
{
    for (int i = 0; i < 20; ++i)
        home.write(QStringLiteral("music/%1.mp3").arg(i), "");
    dialogs.folderResult = home.file(QStringLiteral("music"));
    velto->DoIt(24);
    QTest::keyClick(window, Qt::Key_Escape);
    // A later folder of one file: a scan left running would take it in after
    // what it still had to walk.
    const QString later = home.write(QStringLiteral("later/z.mp3"), "");
    dialogs.folderResult = home.file(QStringLiteral("later"));
    velto->DoIt(24);
    ASSERT_TRUE(QTest::qWaitFor([&] { return velto->playlist().PlPath.contains(later); }, 20000));
    EXPECT_EQ(velto->playlist().PlPath, QStringList{later});

    // The folder of an added file reaches the store at once.
    dialogs.openResults = {{home.write(QStringLiteral("songs/Café.mp3"), "")}};
    velto->DoIt(23);
    EXPECT_EQ(store.values.value(QStringLiteral("config/path")),
              home.file(QStringLiteral("songs/")));
}
