#pragma once

#include <QString>

#include <array>

// The ten favourite-skin slots ("FavSkin0" to "FavSkin9"), in the order of
// the popup menu's Favorite Skin entries.
namespace FavouriteSkins {

constexpr int kSlots = 10;
using Slots = std::array<QString, kSlots>;

// "Favorite", "Player", "Calculator", ... "Other 2"; empty outside 0 to 9.
QString slotName(int slot);

// The file the slot holds, a bare name found in skinFolder; empty when the
// slot holds none.
QString chosenFile(int slot, const Slots &favourites, const QString &skinFolder);

// The skin file a slot switches to: chosenFile(), else the shipped skin of
// its mode in shippedFolder when that exists. Empty when the slot has
// nothing to load.
QString skinFile(int slot, const Slots &favourites, const QString &skinFolder,
                 const QString &shippedFolder);

} // namespace FavouriteSkins
