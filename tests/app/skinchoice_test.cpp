#include "app/frmneorb.h"
#include "skin/frmskinbrowse.h"

#include "support/shippedwindow.h"

#include <QAction>
#include <QFile>
#include <QMenu>
#include <gtest/gtest.h>

namespace {

// A click in the skin browser is the end-to-end test's.
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

TEST_F(SkinChoice, FavouriteSkinsLoadAndTheFavoriteEntryListsThem)
{
    // Which file each slot names is FavouriteSkins'; here the menu loads it.
    velto->settings().FavSkin[8] = skins() + QStringLiteral("/karaoke.skin");
    favourite(QStringLiteral("Other &1"))->trigger();
    EXPECT_EQ(velto->settings().Skin, QStringLiteral("karaoke.skin"));

    // Favorite holds nothing and has no mode: the browser offers the
    // favourites, which SkinBrowser's test lists.
    favourite(QStringLiteral("F&avorite"))->trigger();
    ASSERT_TRUE(velto->skinBrowser() && velto->skinBrowser()->isVisible());
    EXPECT_EQ(velto->skinBrowser()->typeFilter(), QStringLiteral("FAVORITE"));
}

// Without the browser, Select Skin asks for a file.
TEST_F(SkinChoice, AnOlderSkinIsImportedBesideItsOriginalWhenTheUserAgrees)
{
    velto->settings().UseSkinBrowser = 0;
    const QString old = olderSkin();
    dialogs.answer = false;
    dialogs.openResults.push_back({old});
    velto->DoIt(6);
    EXPECT_EQ(dialogs.calls.value(0).title, QStringLiteral("Select Skin"));
    EXPECT_EQ(dialogs.calls.value(0).folder, skins());
    EXPECT_EQ(velto->skinBrowser(), nullptr);
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
