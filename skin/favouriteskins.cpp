#include "favouriteskins.h"

#include <QDir>
#include <QFileInfo>

namespace FavouriteSkins {

namespace {

struct Slot
{
    const char *name;
    const char *shipped;
};

constexpr Slot kTable[kSlots] = {
    {"Favorite", ""},
    {"Player", "default.skin"},
    {"Calculator", "calculator.skin"},
    {"Notepad", "notepad.skin"},
    {"Clock", "clock.skin"},
    {"FM Tuner", "fmtuner.skin"},
    {"Web Browser", "browser.skin"},
    {"Web Radio", "webradio.skin"},
    {"Other 1", ""},
    {"Other 2", ""},
};

bool inRange(int slot)
{
    return slot >= 0 && slot < kSlots;
}

// Empty for the slots that name no mode (Favorite, Other 1, Other 2).
QString shippedSkin(int slot)
{
    return inRange(slot) ? QLatin1String(kTable[slot].shipped) : QString();
}

} // namespace

QString slotName(int slot)
{
    return inRange(slot) ? QLatin1String(kTable[slot].name) : QString();
}

QString chosenFile(int slot, const Slots &favourites, const QString &skinFolder)
{
    const QString chosen = inRange(slot) ? favourites[size_t(slot)].trimmed() : QString();
    if (chosen.isEmpty())
        return {};
    return QFileInfo(chosen).isRelative() ? QDir(skinFolder).filePath(chosen) : chosen;
}

QString skinFile(int slot, const Slots &favourites, const QString &skinFolder,
                 const QString &shippedFolder)
{
    if (const QString chosen = chosenFile(slot, favourites, skinFolder); !chosen.isEmpty())
        return chosen;
    const QString shipped = shippedSkin(slot);
    if (shipped.isEmpty())
        return {};
    const QString file = QDir(shippedFolder).filePath(shipped);
    return QFileInfo(file).isFile() ? file : QString();
}

} // namespace FavouriteSkins
