#include "app/popupmenu.h"

#include "support/printers.h"

#include <QAction>
#include <QMenu>
#include <QStringList>
#include <gtest/gtest.h>

namespace {

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

void leaves(QMenu &menu, QList<QAction *> &into)
{
    for (QAction *a : menu.actions()) {
        if (a->menu())
            leaves(*a->menu(), into);
        else
            into << a;
    }
}

// Written out here on purpose: a command swapped in the program must not be
// copied into what it is checked against. Captions are cosmetic; the browsers'
// end-to-end test picks entries by their keys.
TEST(PopupMenu, EachEntryInItsPlaceRunsItsOwnCommand)
{
    // clang-format off
    const QStringList expected = {
        "DoIt 5", "DoIt 6",
        "SelFSkin 0", "SelFSkin 1", "SelFSkin 2", "SelFSkin 3", "SelFSkin 4", "SelFSkin 5",
        "SelFSkin 6", "SelFSkin 7", "SelFSkin 8", "SelFSkin 9",
        "DoIt 12", "DoIt 10", "DoIt 11", "DoIt 15", "DoIt 14", "DoIt 35", "DoIt 21", "DoIt 22",
        "DoIt 20", "DoIt 23", "DoIt 24", "DoIt 37", "DoIt 150",
        "DoIt 69",
        "DoIt 76", "DoIt 77", "DoIt 78", "DoIt 79",
        "DoIt 70", "DoIt 71", "DoIt 72", "DoIt 73", "DoIt 74", "DoIt 75",
        "DoIt 80", "DoIt 81", "DoIt 82", "DoIt 83", "DoIt 84", "DoIt 85",
        "DoIt 101", "DoIt 102", "DoIt 103", "DoIt 104", "DoIt 105", "DoIt 106",
        "DoIt 2", "SetOnTop at 1", "DoIt 1"};
    // clang-format on
    Calls calls;
    PopupMenu popup(calls.handlers(), calls.WinOnTop);
    QList<QAction *> entries;
    leaves(*popup.menu(), entries);
    QStringList asked;
    for (QAction *a : entries) {
        calls.seen.clear();
        a->trigger();
        asked << calls.seen.join('+');
        calls.WinOnTop = 0; // WinOnTop starts at 0
    }
    EXPECT_EQ(asked, expected);
}

// Only exactly 1 counts as on. The entry writes 1 minus the value, unless
// that does not fit in 16 bits.
TEST(PopupMenu, AlwaysOnTopShowsTheValueAtEachOpeningAndWritesOneMinusIt)
{
    Calls calls;
    PopupMenu popup(calls.handlers(), calls.WinOnTop);
    QAction *onTop = nullptr;
    for (QAction *a : popup.menu()->actions())
        onTop = a->text() == QStringLiteral("&Always On Top") ? a : onTop;
    ASSERT_NE(onTop, nullptr);
    // The same menu opened again and again: the value may change in between.
    const std::pair<qint16, qint16> cases[] = {
        {1, 0}, {2, -1}, {-1, 2}, {0, 1}, {-32766, 32767}, {-32767, -32767}, {-32768, -32768}};
    for (const auto &[before, after] : cases) {
        calls.WinOnTop = before;
        popup.popup(QPoint(20, 20));
        EXPECT_TRUE(popup.menu()->isVisible());
        EXPECT_EQ(onTop->isChecked(), before == 1) << before;
        onTop->trigger();
        EXPECT_EQ(calls.WinOnTop, after) << before;
        EXPECT_EQ(onTop->isChecked(), after == 1) << before;
        popup.menu()->hide();
    }
}

} // namespace
