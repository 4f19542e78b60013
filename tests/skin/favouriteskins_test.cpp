#include "skin/favouriteskins.h"

#include "support/printers.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(FavouriteSkins, SlotsFollowTheMenuAndModeSlotsFallBackToTheirShippedSkin)
{
    QTemporaryDir dir;
    const QString skins = dir.filePath(QStringLiteral("skins"));
    const QString mine = dir.filePath(QStringLiteral("mine"));
    QDir().mkpath(skins);
    QDir().mkpath(mine);
    for (const char *name : {"default.skin", "calculator.skin", "browser.skin"}) {
        QFile f(skins + '/' + name);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    FavouriteSkins::Slots favourites;
    favourites[2] = mine + QStringLiteral("/calc.skin");
    favourites[8] = QStringLiteral("  other.skin ");

    const struct
    {
        int slot;
        QString name, file;
    } cases[] = {
        {0, "Favorite", ""},                    // no mode of its own
        {1, "Player", skins + "/default.skin"}, // empty: the shipped player
        {2, "Calculator", mine + "/calc.skin"}, // the slot's own skin
        {3, "Notepad", ""},                     // its shipped skin is missing
        {6, "Web Browser", skins + "/browser.skin"},
        {7, "Web Radio", ""},
        {8, "Other 1", mine + "/other.skin"}, // a bare name is in the skin folder
        {9, "Other 2", ""},
        {10, "", ""},
        {-1, "", ""},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(FavouriteSkins::slotName(c.slot), c.name) << c.slot;
        EXPECT_EQ(FavouriteSkins::skinFile(c.slot, favourites, mine, skins), c.file) << c.slot;
    }
    EXPECT_EQ(FavouriteSkins::shippedSkin(5), QStringLiteral("fmtuner.skin"));
    EXPECT_EQ(FavouriteSkins::shippedSkin(4), QStringLiteral("clock.skin"));
}
