#include "player/frmvisloader.h"

#include "support/fakes.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <QCheckBox>
#include <QListWidget>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

class VisLoader : public ::testing::Test
{
protected:
    void SetUp() override
    {
        home.write("nocover.bmp", picture(0xff808080, "BMP", {8, 8}));
        for (int i = 1; i <= 17; ++i)
            home.write(QStringLiteral("lists/list%1.m3u").arg(i, 2, 10, QLatin1Char('0')),
                       "a.mp3\n");
        home.write("lists/Rock.DIR/inner.m3u", "r.mp3\n");
        loader = std::make_unique<frmVisLoader>(frmVisLoader::Options{visPLPath},
                                                root + "nocover.bmp", dialogs);
        loader->show();
    }

    VisPictureBox *box(int i) const
    {
        return loader->findChild<VisPictureBox *>(QStringLiteral("iPic%1").arg(i));
    }
    bool settled()
    {
        return QTest::qWaitFor(
            [&] { return !loader->scan().isRunning() && !loader->pageLoading(); }, 20000);
    }

    TempHome home;
    const QString root = home.path() + '/', lists = root + "lists/";
    QString visPLPath;
    FakeDialogs dialogs;
    std::unique_ptr<frmVisLoader> loader;
};

} // namespace

TEST_F(VisLoader, AFolderEntryIsEnteredAndAPlaylistAskedToLoad)
{
    loader->scanFolder(lists);
    ASSERT_TRUE(settled());
    ASSERT_TRUE(loader->scan().isFolder(0));
    QSignalSpy load(loader.get(), &frmVisLoader::loadRequested);
    QTest::mouseDClick(box(0), Qt::LeftButton);
    ASSERT_TRUE(settled());
    EXPECT_EQ(loader->scan().folder(), lists + "Rock.DIR/");
    EXPECT_EQ(loader->scan().count(), 1);
    loader->iPic_Click(0);
    loader->cLoad_Click();
    ASSERT_EQ(load.count(), 1);
    EXPECT_EQ(load[0][0].toString(), lists + "Rock.DIR/inner.m3u");
}

TEST_F(VisLoader, TheEntriesOfALoadedListPlayFromTheList)
{
    QSignalSpy play(loader.get(), &frmVisLoader::playRequested);
    loader->showEntries({"one", "two", "three"}, 5);
    auto *list = loader->findChild<QListWidget *>(QStringLiteral("PlayList"));
    ASSERT_EQ(list->count(), 3);
    loader->PlayList_DblClick(2);
    loader->PlayList_DblClick(3); // past the end
    ASSERT_EQ(play.count(), 1);
    EXPECT_EQ(play[0][0].toInt(), 7) << "the third of the entries that began at 5";
}

TEST_F(VisLoader, AChosenFolderBecomesTheDefaultOnlyWhenAskedTo)
{
    loader->cSelDir_Click(); // cancelled
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_TRUE(visPLPath.isEmpty());

    dialogs.folderResult = lists + "Rock.DIR";
    loader->findChild<QCheckBox *>(QStringLiteral("chkSetDef"))->setChecked(false);
    loader->cSelDir_Click();
    EXPECT_TRUE(visPLPath.isEmpty());
    ASSERT_TRUE(settled());
    EXPECT_EQ(loader->scan().count(), 1);

    loader->findChild<QCheckBox *>(QStringLiteral("chkSetDef"))->setChecked(true);
    dialogs.folderResult = lists;
    loader->cSelDir_Click();
    EXPECT_EQ(visPLPath, lists);
}

TEST_F(VisLoader, StopEndsALongScanWithTheListsFoundSoFar)
{
    // Three lists, then a tree far too large to walk in one turn.
    for (const char *name : {"many/a.m3u", "many/b.m3u", "many/c.pls"})
        home.write(QString::fromLatin1(name), "");
    QFile::link(QStringLiteral("/usr/share"), root + "many/shared");
    const auto longScan = [&] {
        loader->scanFolder(root + "many");
        return QTest::qWaitFor([&] { return loader->scan().count() >= 3; }) &&
               loader->scan().isRunning();
    };
    ASSERT_TRUE(longScan());
    loader->cCancel_Click();
    EXPECT_FALSE(loader->scan().isRunning());
    const int found = loader->scan().count();
    ASSERT_TRUE(settled()) << "the first page still shows its pictures";
    EXPECT_EQ(loader->scan().count(), found) << "nothing comes after the stop";
    EXPECT_FALSE(box(0)->pixmap().isNull());

    // A missing folder chosen while a scan runs ends it: nothing is left to stop.
    ASSERT_TRUE(longScan());
    loader->scanFolder(root + "missing");
    EXPECT_EQ(loader->findChild<QLabel *>(QStringLiteral("PName"))->text(),
              QStringLiteral("This folder does not exist: ") + root + "missing");
    EXPECT_EQ(loader->scan().count(), 0);
    loader->cCancel_Click();
    EXPECT_FALSE(loader->isVisible()) << "Exit closes the window";
}
