#include "skin/favouriteskins.h"

#include "support/temphome.h"

#include <QDir>
#include <gtest/gtest.h>

TEST(FavouriteSkins, SlotsFollowTheMenuAndModeSlotsFallBackToTheirShippedSkin)
{
    TempHome dir;
    const QString skins = dir.file(QStringLiteral("skins"));
    const QString mine = dir.file(QStringLiteral("mine"));
    QDir().mkpath(mine);
    for (const char *shipped : {"default.skin", "calculator.skin"})
        dir.write(QStringLiteral("skins/") + QLatin1String(shipped), {});
    FavouriteSkins::Slots favourites;
    favourites[2] = mine + QStringLiteral("/calc.skin");
    favourites[8] = QStringLiteral("  other.skin ");

    const std::tuple<int, QString, QString> cases[] = {
        {0, "Favorite", ""},                    // no mode of its own
        {1, "Player", skins + "/default.skin"}, // empty: the shipped player
        {2, "Calculator", mine + "/calc.skin"}, // the slot's own skin
        {3, "Notepad", ""},                     // its shipped skin is missing
        {8, "Other 1", mine + "/other.skin"},   // a bare name is in the skin folder
    };
    for (const auto &[slot, name, file] : cases) {
        EXPECT_EQ(FavouriteSkins::slotName(slot), name) << slot;
        EXPECT_EQ(FavouriteSkins::skinFile(slot, favourites, mine, skins), file) << slot;
    }
}
