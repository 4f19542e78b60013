#include "app/frmneorb.h"
#include "skin/frmskinbrowse.h"

#include "support/shippedwindow.h"

#include <QAction>
#include <QFile>
#include <QListWidget>
#include <QMenu>
#include <gtest/gtest.h>

namespace {

// Choosing skins on the real window: Select Skin without the skin browser (a
// click in it is the end-to-end test's), the favourite skins of the popup
// menu, and the import of older skins.
class SkinChoice : public ::testing::Test, protected ShippedWindow
{
protected:
    SkinChoice() { start(); }

    QString skins() const { return home.file(QStringLiteral("data/velto/skins")); }

    QAction *favourite(const QString &caption)
    {
        for (QAction *a : velto->menu().menu()->actions()) {
            if (a->menu() && a->text() == QStringLiteral("&Favorite Skin"))
                for (QAction *f : a->menu()->actions())
                    if (f->text() == caption)
                        return f;
        }
        return nullptr;
    }

    // An older skin beside the shipped ones, drawn by the player's pictures.
    QString olderSkin()
    {
        QFile shipped(skins() + QStringLiteral("/default.skin"));
        EXPECT_TRUE(shipped.open(QIODevice::ReadOnly));
        QByteArray bytes = shipped.readAll();
        bytes.replace("\"Velto Skin/PLAYER\"", "\"Ne-Orb Skin\"");
        return home.write(QStringLiteral("data/velto/skins/old.skin"), bytes);
    }
};

} // namespace

TEST_F(SkinChoice, WithoutTheBrowserSelectSkinAsksForAFile)
{
    velto->settings().UseSkinBrowser = 0;
    dialogs.openResults.push_back({skins() + QStringLiteral("/notepad.skin")});
    velto->DoIt(6);
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_EQ(dialogs.calls[0].title, QStringLiteral("Select Skin"));
    EXPECT_EQ(dialogs.calls[0].folder, skins());
    EXPECT_EQ(velto->settings().Skin, QStringLiteral("notepad.skin"));
    EXPECT_EQ(velto->skinBrowser(), nullptr);
}

TEST_F(SkinChoice, FavouriteSkinsLoadAndTheFavoriteEntryListsThem)
{
    // Which file each slot names is FavouriteSkins'; here the menu loads it.
    velto->settings().FavSkin[8] = skins() + QStringLiteral("/karaoke.skin");
    favourite(QStringLiteral("Other &1"))->trigger();
    EXPECT_EQ(velto->settings().Skin, QStringLiteral("karaoke.skin"));
    velto->settings().FavSkin[2] = QStringLiteral("clock.skin");

    // Favorite holds nothing and has no mode: the browser offers the favourites.
    favourite(QStringLiteral("F&avorite"))->trigger();
    ASSERT_TRUE(velto->skinBrowser() && velto->skinBrowser()->isVisible());
    EXPECT_EQ(velto->skinBrowser()->typeFilter(), QStringLiteral("FAVORITE"));
    auto *list = velto->skinBrowser()->findChild<QListWidget *>(QStringLiteral("List1"));
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->item(0)->text(), QStringLiteral("CLOCK > Velto Slate Clock"));
    EXPECT_EQ(list->item(1)->text(), QStringLiteral("KARAOKE > Velto Slate Karaoke"));
}

TEST_F(SkinChoice, AnOlderSkinIsImportedBesideItsOriginalWhenTheUserAgrees)
{
    velto->settings().UseSkinBrowser = 0;
    const QString old = olderSkin();
    dialogs.answer = false;
    dialogs.openResults.push_back({old});
    velto->DoIt(6);
    ASSERT_EQ(dialogs.questionTitles, QStringList({"Import Skin"}));
    EXPECT_EQ(velto->settings().Skin, QStringLiteral("old.skin")) << "loaded as it is";
    EXPECT_FALSE(QFile::exists(skins() + QStringLiteral("/old-velto.skin")));

    dialogs.answer = true;
    dialogs.openResults.push_back({old});
    velto->DoIt(6);
    EXPECT_EQ(velto->settings().Skin, QStringLiteral("old-velto.skin"));
    QFile original(old);
    ASSERT_TRUE(original.open(QIODevice::ReadOnly));
    EXPECT_TRUE(original.readAll().startsWith("\"Ne-Orb Skin\"")) << "the original stays";
    EXPECT_TRUE(dialogs.messages.isEmpty()) << dialogs.messages.join('|').toStdString();
}
