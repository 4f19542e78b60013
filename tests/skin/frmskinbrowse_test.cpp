#include "skin/frmskinbrowse.h"

#include "skinrig.h"

#include <QDirIterator>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

// The shipped skins in a folder of their own, loaded onto a real window.
class SkinBrowser : public ::testing::Test, protected SkinRig
{
protected:
    void SetUp() override
    {
        skins = home.file(QStringLiteral("skins"));
        QDir().mkpath(skins);
        QDirIterator it(QStringLiteral(VELTO_DATA_DIR "/skins"), QDir::Files);
        while (it.hasNext()) {
            const QString from = it.next();
            ASSERT_TRUE(QFile::copy(from, skins + '/' + it.fileName()));
        }
        browser = std::make_unique<frmSkinBrowse>(
            frmSkinBrowse::Options{skinPath, favourites, skins}, loader, dialogs,
            [this](const QString &file) {
                loads << file;
                return loader.LoadSkin(file) ? loader.file() : QString();
            });
        browser->ReadSkinDir();
    }

    QListWidget &list() { return *browser->findChild<QListWidget *>(QStringLiteral("List1")); }
    QString comment() { return browser->findChild<QLabel *>(QStringLiteral("Comment"))->text(); }
    QStringList entries()
    {
        QStringList texts;
        for (int i = 0; i < list().count(); ++i)
            texts << list().item(i)->text();
        return texts;
    }
    void clickRow(int row)
    {
        QListWidget &l = list();
        QTest::mouseClick(l.viewport(), Qt::LeftButton, {}, l.visualItemRect(l.item(row)).center());
    }

    QString skins;
    QString skinPath;
    FavouriteSkins::Slots favourites;
    std::unique_ptr<frmSkinBrowse> browser;
    QStringList loads;
};

} // namespace

TEST_F(SkinBrowser, AClickLoadsTheSkinAndShowsItsComment)
{
    const int calculator = int(entries().indexOf("CALCULATOR > Velto Slate Calculator"));
    ASSERT_GE(calculator, 0) << entries().join(',').toStdString();
    clickRow(calculator);
    ASSERT_EQ(loads, QStringList({skins + "/calculator.skin"}));
    EXPECT_EQ(comment(), loader.skin().comment.trimmed().replace('\r', '\n'));

    // A skin gone since the list was read: the loader says so, the browser stays.
    const QString shown = comment();
    const int clock = int(entries().indexOf("CLOCK > Velto Slate Clock"));
    QFile::remove(skins + "/clock.skin");
    clickRow(clock);
    EXPECT_EQ(dialogs.messages, QStringList({"Skin not found!"}));
    EXPECT_EQ(loader.file(), skins + "/calculator.skin");
    EXPECT_EQ(comment(), shown);
}

TEST_F(SkinBrowser, TheFolderButtonChangesTheSkinFolder)
{
    const QString other = home.file(QStringLiteral("other"));
    QDir().mkpath(other);
    QFile::copy(skins + "/clock.skin", other + "/mine.skin");

    dialogs.folderResult = other;
    browser->SetSDir();
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_EQ(dialogs.calls[0].folder, skins) << "the dialog opens on the folder shown";
    EXPECT_EQ(skinPath, other);
    EXPECT_EQ(entries(), QStringList({"MINE > Velto Slate Clock"}));
}

TEST_F(SkinBrowser, TheSelectedSkinBecomesAFavourite)
{
    list().setCurrentRow(int(entries().indexOf("KARAOKE > Velto Slate Karaoke")));
    auto *button = browser->findChild<QToolButton *>(QStringLiteral("cFavSkin"));
    ASSERT_NE(button, nullptr);
    QMenu *menu = button->menu();
    emit menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 10);
    menu->actions()[8]->trigger();
    EXPECT_EQ(favourites[8], skins + "/karaoke.skin");
}

TEST_F(SkinBrowser, TheInfoButtonShowsAndHidesTheCommentShownOrNot)
{
    auto *info = browser->findChild<QPushButton *>(QStringLiteral("cToggInfo"));
    QWidget *comment = browser->findChild<QLabel *>(QStringLiteral("Comment"));
    info->click(); // before the window is shown
    browser->show();
    EXPECT_EQ(std::pair(comment->isVisible(), info->isChecked()), std::pair(false, false));
    info->click();
    EXPECT_EQ(std::pair(comment->isVisible(), info->isChecked()), std::pair(true, true));
}
