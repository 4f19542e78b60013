#include "app/popupmenu.h"

#include "support/printers.h"

#include <QAction>
#include <QMenu>
#include <QStringList>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// What the menu asked of the program, in order.
struct Calls
{
    QStringList seen;
    qint16 WinOnTop = 0;

    PopupMenu::Handlers handlers()
    {
        return {[this](qint16 cmd) { seen << QStringLiteral("DoIt %1").arg(cmd); },
                [this](int slot) { seen << QStringLiteral("SelFSkin %1").arg(slot); },
                [this] { seen << QStringLiteral("SetOnTop at %1").arg(WinOnTop); }};
    }
};

// One entry of the menu as the user sees it: its caption, and what choosing
// it asks of the program, or the entries of the submenu it opens.
struct Entry
{
    const char *caption;
    const char *asks = nullptr;
    std::vector<Entry> submenu = {};
};

// Written out here on purpose: a caption mistyped or a command swapped in the
// program must not be copied into what it is checked against.
// clang-format off
const std::vector<Entry> kMenu = {
    {"&Preferences...", "DoIt 5"},
    {"Select S&kin...", "DoIt 6"},
    {"&Favorite Skin", nullptr, {
        {"F&avorite", "SelFSkin 0"}, {"&Player", "SelFSkin 1"}, {"&Calculator", "SelFSkin 2"},
        {"&Notepad", "SelFSkin 3"}, {"Cloc&k", "SelFSkin 4"}, {"&FM Tuner", "SelFSkin 5"},
        {"Web Browser", "SelFSkin 6"}, {"Web &Radio", "SelFSkin 7"}, {"Other &1", "SelFSkin 8"},
        {"Other &2", "SelFSkin 9"}}},
    {"&Player", nullptr, {
        {"&Play", "DoIt 12"}, {"&Stop", "DoIt 10"}, {"P&ause", "DoIt 11"}, {"&Next", "DoIt 15"},
        {"Pre&vious", "DoIt 14"}, {"&Visual Playlist Selector...", "DoIt 35"},
        {"&Load Playlist...", "DoIt 21"}, {"Save Playlist...", "DoIt 22"},
        {"Clear Playlist", "DoIt 20"}, {"Add &File...", "DoIt 23"},
        {"Add Directory...", "DoIt 24"}, {"&Toggle Media/CD Mode", "DoIt 37"},
        {"&Quick Find/Play", "DoIt 150"}}},
    {"&Calculator", nullptr, {{"Load Conversion File...", "DoIt 69"}}},
    {"&Notepad", nullptr, {
        {"&Load File...", "DoIt 76"}, {"&Save File...", "DoIt 77"}, {"&Clear", "DoIt 78"},
        {"&Print Note...", "DoIt 79"}}},
    {"&Timers", nullptr, {
        {"Select &Next Timer", "DoIt 70"}, {"Select &Previous Timer", "DoIt 71"},
        {"&Start/Stop Current", "DoIt 72"}, {"&Reset Current", "DoIt 73"}, {"&Lap", "DoIt 74"},
        {"Reset &All", "DoIt 75"}}},
    {"&FM Tuner", nullptr, {
        {"Scan &Down", "DoIt 80"}, {"Scan &Up", "DoIt 81"}, {"Tune D&own", "DoIt 82"},
        {"Tune Up", "DoIt 83"}, {"&Prev Preset", "DoIt 84"}, {"&Next Preset", "DoIt 85"}}},
    {"&Web Browser", nullptr, {
        {"&Home", "DoIt 101"}, {"&Refresh", "DoIt 102"}, {"&Back", "DoIt 103"},
        {"&Forward", "DoIt 104"}, {"&Stop", "DoIt 105"}, {"Searc&h", "DoIt 106"}}},
    {"&Minimize Window", "DoIt 2"},
    {"&Always On Top", "SetOnTop at 1"}, // WinOnTop starts at 0
    {"&Quit", "DoIt 1"},
};
// clang-format on

// Walks the built menu against the table: the captions in their order, a
// submenu behind each header, and each other entry asking for its own action alone.
void expectMenu(QMenu &menu, const std::vector<Entry> &table, Calls &calls, const std::string &path)
{
    const QList<QAction *> actions = menu.actions();
    QStringList built, wanted;
    for (const QAction *a : actions)
        built << a->text();
    for (const Entry &e : table)
        wanted << QString::fromUtf8(e.caption);
    ASSERT_EQ(built, wanted) << "in " << path;

    for (qsizetype i = 0; i < actions.size(); ++i) {
        const Entry &e = table[size_t(i)];
        QAction *a = actions[i];
        const std::string where = path + " > " + e.caption;
        calls.seen.clear();
        if (e.submenu.empty()) {
            EXPECT_EQ(a->menu(), nullptr) << where;
            a->trigger();
            EXPECT_EQ(calls.seen, QStringList{QString::fromUtf8(e.asks)}) << where;
            continue;
        }
        QMenu *submenu = a->menu();
        ASSERT_NE(submenu, nullptr) << where;
        expectMenu(*submenu, e.submenu, calls, where);
    }
}

TEST(PopupMenu, BuiltMenuShowsEveryCaptionInItsPlaceAndEachEntryRunsItsOwnCommand)
{
    Calls calls;
    PopupMenu popup(calls.handlers(), calls.WinOnTop);
    expectMenu(*popup.menu(), kMenu, calls, "Popup Menu");
}

TEST(PopupMenu, AlwaysOnTopShowsTheValueAtEachOpening)
{
    Calls calls;
    PopupMenu popup(calls.handlers(), calls.WinOnTop);
    QAction *onTop = nullptr;
    for (QAction *a : popup.menu()->actions())
        onTop = a->text() == QStringLiteral("&Always On Top") ? a : onTop;
    ASSERT_NE(onTop, nullptr);
    // The same menu opened again and again: the value may change in between,
    // and only exactly 1 counts as on.
    for (const qint16 WinOnTop : {1, 2, 1, -1, 0}) {
        calls.WinOnTop = WinOnTop;
        popup.popup(QPoint(20, 20));
        EXPECT_TRUE(popup.menu()->isVisible());
        EXPECT_EQ(onTop->isChecked(), WinOnTop == 1) << "WinOnTop " << WinOnTop;
        popup.menu()->hide();
    }
    EXPECT_EQ(calls.seen, QStringList());
}

} // namespace
