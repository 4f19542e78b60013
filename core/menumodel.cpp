#include "menumodel.h"

#include <QStringList>
#include <limits>
#include <utility>

namespace {

using A = MenuEntry::Action;

MenuEntry command(const QString &caption, int cmd)
{
    return {caption, A::Command, cmd, {}};
}

MenuEntry submenu(const QString &caption, std::vector<MenuEntry> children)
{
    return {caption, A::Submenu, 0, std::move(children)};
}

// Captions bound to consecutive commands from first on.
std::vector<MenuEntry> numbered(const QStringList &captions, int first)
{
    std::vector<MenuEntry> entries;
    for (const QString &c : captions)
        entries.push_back(command(c, first++));
    return entries;
}

} // namespace

QString popupMenuTitle()
{
    return QStringLiteral("Popup Menu");
}

std::vector<MenuEntry> popupMenu()
{
    std::vector<MenuEntry> favourites;
    const QStringList slotNames = {QStringLiteral("F&avorite"),   QStringLiteral("&Player"),
                                   QStringLiteral("&Calculator"), QStringLiteral("&Notepad"),
                                   QStringLiteral("Cloc&k"),      QStringLiteral("&FM Tuner"),
                                   QStringLiteral("Web Browser"), QStringLiteral("Web &Radio"),
                                   QStringLiteral("Other &1"),    QStringLiteral("Other &2")};
    for (int i = 0; i < slotNames.size(); ++i)
        favourites.push_back({slotNames[i], A::FavouriteSkin, i, {}});

    std::vector<MenuEntry> player = {
        command(QStringLiteral("&Play"), 12),
        command(QStringLiteral("&Stop"), 10),
        command(QStringLiteral("P&ause"), 11),
        command(QStringLiteral("&Next"), 15),
        command(QStringLiteral("Pre&vious"), 14),
        command(QStringLiteral("&Visual Playlist Selector..."), 35),
        command(QStringLiteral("&Load Playlist..."), 21),
        command(QStringLiteral("Save Playlist..."), 22),
        command(QStringLiteral("Clear Playlist"), 20),
        command(QStringLiteral("Add &File..."), 23),
        command(QStringLiteral("Add Directory..."), 24),
        command(QStringLiteral("&Toggle Media/CD Mode"), 37),
        command(QStringLiteral("&Quick Find/Play"), 150),
    };

    std::vector<MenuEntry> menu;
    menu.push_back(command(QStringLiteral("&Preferences..."), 5));
    menu.push_back(command(QStringLiteral("Select S&kin..."), 6));
    menu.push_back(submenu(QStringLiteral("&Favorite Skin"), std::move(favourites)));
    menu.push_back(submenu(QStringLiteral("&Player"), std::move(player)));
    menu.push_back(submenu(QStringLiteral("&Calculator"),
                           {command(QStringLiteral("Load Conversion File..."), 69)}));
    menu.push_back(
        submenu(QStringLiteral("&Notepad"),
                numbered({QStringLiteral("&Load File..."), QStringLiteral("&Save File..."),
                          QStringLiteral("&Clear"), QStringLiteral("&Print Note...")},
                         76)));
    menu.push_back(submenu(
        QStringLiteral("&Timers"),
        numbered({QStringLiteral("Select &Next Timer"), QStringLiteral("Select &Previous Timer"),
                  QStringLiteral("&Start/Stop Current"), QStringLiteral("&Reset Current"),
                  QStringLiteral("&Lap"), QStringLiteral("Reset &All")},
                 70)));
    menu.push_back(
        submenu(QStringLiteral("&FM Tuner"),
                numbered({QStringLiteral("Scan &Down"), QStringLiteral("Scan &Up"),
                          QStringLiteral("Tune D&own"), QStringLiteral("Tune Up"),
                          QStringLiteral("&Prev Preset"), QStringLiteral("&Next Preset")},
                         80)));
    menu.push_back(submenu(
        QStringLiteral("&Web Browser"),
        numbered({QStringLiteral("&Home"), QStringLiteral("&Refresh"), QStringLiteral("&Back"),
                  QStringLiteral("&Forward"), QStringLiteral("&Stop"), QStringLiteral("Searc&h")},
                 101)));
    menu.push_back(command(QStringLiteral("&Minimize Window"), 2));
    menu.push_back({QStringLiteral("&Always On Top"), A::AlwaysOnTop, 0, {}});
    menu.push_back(command(QStringLiteral("&Quit"), 1));
    return menu;
}

qint16 toggledOnTop(qint16 WinOnTop)
{
    const int flipped = 1 - int(WinOnTop);
    if (flipped > std::numeric_limits<qint16>::max())
        return WinOnTop;
    return qint16(flipped);
}

bool isOnTop(qint16 WinOnTop)
{
    return WinOnTop == 1;
}
