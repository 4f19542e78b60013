#include "skin/frmskinbrowse.h"

#include "skin/skinloader.h"

#include "support/fakes.h"
#include "support/printers.h"

#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

// The shipped skins in a folder of their own, loaded onto a real window.
class SkinBrowser : public ::testing::Test
{
protected:
    void SetUp() override
    {
        skins = home.filePath(QStringLiteral("skins"));
        QDir().mkpath(skins);
        QDirIterator it(QStringLiteral(VELTO_DATA_DIR "/skins"), QDir::Files);
        while (it.hasNext()) {
            const QString from = it.next();
            ASSERT_TRUE(QFile::copy(from, skins + '/' + it.fileName()));
        }
        loader = std::make_unique<SkinLoader>(window, dialogs, clock);
        browser = std::make_unique<frmSkinBrowse>(
            frmSkinBrowse::Options{skinPath, favourites, skins}, *loader, dialogs,
            [this](const QString &file) {
                loads << file;
                return loader->LoadSkin(file) ? loader->file() : QString();
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

    QTemporaryDir home;
    QString skins;
    QString skinPath;
    FavouriteSkins::Slots favourites;
    FakeDialogs dialogs;
    FakeClock clock;
    QWidget window;
    std::unique_ptr<SkinLoader> loader;
    std::unique_ptr<frmSkinBrowse> browser;
    QStringList loads;
};

} // namespace

TEST_F(SkinBrowser, ListsTheSkinsOfTheFolderUnderEachType)
{
    EXPECT_EQ(browser->skinFolder(), skins) << "no skin folder set: the program's skins";
    EXPECT_EQ(
        entries(),
        QStringList({"BROWSER > Velto Slate Web Browser", "CALCULATOR > Velto Slate Calculator",
                     "CLOCK > Velto Slate Clock", "DEFAULT > Velto Slate",
                     "FMTUNER > Velto Slate FM Tuner", "KARAOKE > Velto Slate Karaoke",
                     "NOTEPAD > Velto Slate Notepad", "WEBRADIO > Velto Slate Web Radio"}));
    const struct
    {
        QString type;
        QStringList listed;
    } cases[] = {
        {"Player", {"DEFAULT > Velto Slate"}},
        {"WebRadio", {"WEBRADIO > Velto Slate Web Radio"}},
        {"Browser", {"BROWSER > Velto Slate Web Browser"}},
        {"Screensaver", {}},
        {"Favorite", {}},
    };
    for (const auto &c : cases) {
        browser->setTypeFilter(c.type);
        EXPECT_EQ(browser->typeFilter(), c.type.toUpper());
        EXPECT_EQ(entries(), c.listed) << c.type.toStdString();
    }
    EXPECT_TRUE(loads.isEmpty()) << "listing loads nothing";
}

TEST_F(SkinBrowser, AClickLoadsTheSkinAndShowsItsComment)
{
    const int calculator = int(entries().indexOf("CALCULATOR > Velto Slate Calculator"));
    clickRow(calculator);
    ASSERT_EQ(loads, QStringList({skins + "/calculator.skin"}));
    EXPECT_EQ(loader->file(), skins + "/calculator.skin");
    EXPECT_FALSE(comment().isEmpty());
    EXPECT_FALSE(comment().contains('\r'));
    EXPECT_EQ(comment(), loader->skin().comment.trimmed().replace('\r', '\n'));
    clickRow(calculator);
    EXPECT_EQ(loads.size(), 1) << "the skin shown is not loaded again";

    // A skin gone since the list was read: the loader says so, the browser stays.
    const QString shown = comment();
    const int clock = int(entries().indexOf("CLOCK > Velto Slate Clock"));
    QFile::remove(skins + "/clock.skin");
    clickRow(clock);
    EXPECT_EQ(dialogs.messages, QStringList({"Skin not found!"}));
    EXPECT_EQ(loader->file(), skins + "/calculator.skin");
    EXPECT_EQ(comment(), shown);
}

TEST_F(SkinBrowser, TheCurrentSkinIsSelectedWithoutLoadingIt)
{
    ASSERT_TRUE(loader->LoadSkin(skins + "/notepad.skin"));
    browser->setCurrentSkin(skins + "/notepad.skin");
    browser->ReadSkinDir();
    ASSERT_NE(list().currentItem(), nullptr);
    EXPECT_EQ(list().currentItem()->text(), QStringLiteral("NOTEPAD > Velto Slate Notepad"));
    EXPECT_FALSE(comment().isEmpty());
    EXPECT_TRUE(loads.isEmpty());
}

TEST_F(SkinBrowser, TheFolderButtonChangesTheSkinFolderUnlessCancelled)
{
    const QString other = home.filePath(QStringLiteral("other"));
    QDir().mkpath(other);
    QFile::copy(skins + "/clock.skin", other + "/mine.skin");

    browser->SetSDir(); // cancelled
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_EQ(dialogs.calls[0].title, QStringLiteral("Select Skin Directory:"));
    EXPECT_EQ(dialogs.calls[0].folder, skins);
    EXPECT_TRUE(skinPath.isEmpty());
    EXPECT_EQ(entries().size(), 8);

    dialogs.folderResult = other;
    browser->SetSDir();
    EXPECT_EQ(skinPath, other);
    EXPECT_EQ(entries(), QStringList({"MINE > Velto Slate Clock"}));
}

TEST_F(SkinBrowser, TheSelectedSkinBecomesAFavouriteAndIsListedAsOne)
{
    list().setCurrentRow(int(entries().indexOf("KARAOKE > Velto Slate Karaoke")));
    auto *button = browser->findChild<QToolButton *>(QStringLiteral("cFavSkin"));
    ASSERT_NE(button, nullptr);
    QMenu *menu = button->menu();
    emit menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 10);
    EXPECT_EQ(menu->actions()[8]->text(), QStringLiteral("&8 Other 1 (none)"));
    menu->actions()[8]->trigger();
    EXPECT_EQ(favourites[8], skins + "/karaoke.skin");
    emit menu->aboutToShow();
    EXPECT_EQ(menu->actions()[8]->text(), QStringLiteral("&8 Other 1 (karaoke.skin)"));

    browser->setTypeFilter(QStringLiteral("Favorite"));
    EXPECT_EQ(entries(), QStringList({"KARAOKE > Velto Slate Karaoke"}));
}

TEST_F(SkinBrowser, TheInfoButtonShowsAndHidesTheComment)
{
    browser->show();
    QWidget *info = browser->findChild<QLabel *>(QStringLiteral("Comment"));
    EXPECT_TRUE(info->isVisible());
    browser->cToggInfo();
    EXPECT_FALSE(info->isVisible());
    browser->cToggInfo();
    EXPECT_TRUE(info->isVisible());
}

TEST_F(SkinBrowser, ManySkinsAndOddFilesListWithoutTrouble)
{
    const QString many = home.filePath(QStringLiteral("many"));
    QDir().mkpath(many);
    for (int i = 0; i < 200; ++i) {
        QFile f(many + QStringLiteral("/s%1.skin").arg(i, 4, 10, QLatin1Char('0')));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(i % 2 ? "\"Velto Skin/PLAYER\",\"P\"\n" : "\"Velto Skin/CLOCK\",\"C\"\n");
    }
    QDir().mkpath(many + "/dir.skin");
    skinPath = many;
    browser->setTypeFilter(QStringLiteral("Clock"));
    EXPECT_EQ(list().count(), 100);
    EXPECT_EQ(list().item(0)->text(), QStringLiteral("S0000 > C"));
}
