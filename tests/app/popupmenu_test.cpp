#include "app/popupmenu.h"

#include "support/printers.h"

#include <QAction>
#include <QMenu>
#include <QStringList>
#include <gtest/gtest.h>

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

struct Entry
{
    QString path; // captions from the top, joined by "/"
    QAction *action;
};

void collect(const QMenu &menu, const QString &prefix, QList<Entry> &leaves,
             QList<QAction *> &headers)
{
    for (QAction *a : menu.actions()) {
        const QString path = prefix + a->text();
        if (a->menu()) {
            headers << a;
            collect(*a->menu(), path + '/', leaves, headers);
        } else {
            leaves << Entry{path, a};
        }
    }
}

QAction *findEntry(const QMenu &menu, const QString &caption)
{
    for (QAction *a : menu.actions()) {
        if (a->text() == caption)
            return a;
    }
    return nullptr;
}

TEST(PopupMenu, EveryEntryAsksForItsOwnActionOnly)
{
    Calls calls;
    PopupMenu popup(calls.handlers(), calls.WinOnTop);
    QList<Entry> leaves;
    QList<QAction *> headers;
    collect(*popup.menu(), {}, leaves, headers);

    QStringList outcome;
    for (const Entry &e : leaves) {
        calls.seen.clear();
        e.action->trigger();
        outcome << e.path + " -> " + calls.seen.join(", ");
    }
    EXPECT_EQ(outcome, (QStringList{
                           "&Preferences... -> DoIt 5",
                           "Select S&kin... -> DoIt 6",
                           "&Favorite Skin/F&avorite -> SelFSkin 0",
                           "&Favorite Skin/&Player -> SelFSkin 1",
                           "&Favorite Skin/&Calculator -> SelFSkin 2",
                           "&Favorite Skin/&Notepad -> SelFSkin 3",
                           "&Favorite Skin/Cloc&k -> SelFSkin 4",
                           "&Favorite Skin/&FM Tuner -> SelFSkin 5",
                           "&Favorite Skin/Web Browser -> SelFSkin 6",
                           "&Favorite Skin/Web &Radio -> SelFSkin 7",
                           "&Favorite Skin/Other &1 -> SelFSkin 8",
                           "&Favorite Skin/Other &2 -> SelFSkin 9",
                           "&Player/&Play -> DoIt 12",
                           "&Player/&Stop -> DoIt 10",
                           "&Player/P&ause -> DoIt 11",
                           "&Player/&Next -> DoIt 15",
                           "&Player/Pre&vious -> DoIt 14",
                           "&Player/&Visual Playlist Selector... -> DoIt 35",
                           "&Player/&Load Playlist... -> DoIt 21",
                           "&Player/Save Playlist... -> DoIt 22",
                           "&Player/Clear Playlist -> DoIt 20",
                           "&Player/Add &File... -> DoIt 23",
                           "&Player/Add Directory... -> DoIt 24",
                           "&Player/&Toggle Media/CD Mode -> DoIt 37",
                           "&Player/&Quick Find/Play -> DoIt 150",
                           "&Calculator/Load Conversion File... -> DoIt 69",
                           "&Notepad/&Load File... -> DoIt 76",
                           "&Notepad/&Save File... -> DoIt 77",
                           "&Notepad/&Clear -> DoIt 78",
                           "&Notepad/&Print Note... -> DoIt 79",
                           "&Timers/Select &Next Timer -> DoIt 70",
                           "&Timers/Select &Previous Timer -> DoIt 71",
                           "&Timers/&Start/Stop Current -> DoIt 72",
                           "&Timers/&Reset Current -> DoIt 73",
                           "&Timers/&Lap -> DoIt 74",
                           "&Timers/Reset &All -> DoIt 75",
                           "&FM Tuner/Scan &Down -> DoIt 80",
                           "&FM Tuner/Scan &Up -> DoIt 81",
                           "&FM Tuner/Tune D&own -> DoIt 82",
                           "&FM Tuner/Tune Up -> DoIt 83",
                           "&FM Tuner/&Prev Preset -> DoIt 84",
                           "&FM Tuner/&Next Preset -> DoIt 85",
                           "&Web Browser/&Home -> DoIt 101",
                           "&Web Browser/&Refresh -> DoIt 102",
                           "&Web Browser/&Back -> DoIt 103",
                           "&Web Browser/&Forward -> DoIt 104",
                           "&Web Browser/&Stop -> DoIt 105",
                           "&Web Browser/Searc&h -> DoIt 106",
                           "&Minimize Window -> DoIt 2",
                           "&Always On Top -> SetOnTop at 1",
                           "&Quit -> DoIt 1",
                       }));
    EXPECT_EQ(popup.menu()->title(), QStringLiteral("Popup Menu"));
}

TEST(PopupMenu, SubmenuHeadersRunNothing)
{
    Calls calls;
    PopupMenu popup(calls.handlers(), calls.WinOnTop);
    QList<Entry> leaves;
    QList<QAction *> headers;
    collect(*popup.menu(), {}, leaves, headers);
    ASSERT_EQ(headers.size(), 7);
    for (QAction *header : headers) {
        header->trigger();
        header->menu()->popup(QPoint(10, 10));
        header->menu()->hide();
    }
    EXPECT_EQ(calls.seen, QStringList());
    EXPECT_EQ(calls.WinOnTop, 0);
}

TEST(PopupMenu, AlwaysOnTopIsCheckedOnlyWhileWinOnTopIsOneWhenTheMenuOpens)
{
    Calls calls;
    PopupMenu popup(calls.handlers(), calls.WinOnTop);
    QAction *onTop = findEntry(*popup.menu(), QStringLiteral("&Always On Top"));
    ASSERT_NE(onTop, nullptr);
    EXPECT_TRUE(onTop->isCheckable());
    // The same menu opened again and again: the value may change in between.
    const struct
    {
        qint16 WinOnTop;
        bool checked;
    } cases[] = {{1, true}, {0, false}, {-1, false}, {2, false}, {1, true}, {-32768, false}};
    for (const auto &c : cases) {
        calls.WinOnTop = c.WinOnTop;
        popup.popup(QPoint(20, 20));
        EXPECT_TRUE(popup.menu()->isVisible());
        EXPECT_EQ(onTop->isChecked(), c.checked) << "WinOnTop " << c.WinOnTop;
        popup.menu()->hide();
    }
    EXPECT_EQ(calls.seen, QStringList());
}

TEST(PopupMenu, AlwaysOnTopWritesOneMinusTheValueThenAsksForSetOnTop)
{
    const struct
    {
        qint16 before, after;
    } cases[] = {{0, 1}, {1, 0}, {-1, 2}, {2, -1}, {-32768, -32768}};
    for (const auto &c : cases) {
        Calls calls;
        calls.WinOnTop = c.before;
        PopupMenu popup(calls.handlers(), calls.WinOnTop);
        QAction *onTop = findEntry(*popup.menu(), QStringLiteral("&Always On Top"));
        ASSERT_NE(onTop, nullptr);
        popup.popup(QPoint(20, 20));
        onTop->trigger();
        popup.menu()->hide();
        EXPECT_EQ(calls.WinOnTop, c.after) << "from " << c.before;
        EXPECT_EQ(calls.seen, QStringList{QStringLiteral("SetOnTop at %1").arg(c.after)});
        EXPECT_EQ(onTop->isChecked(), c.after == 1) << "from " << c.before;
    }
}

TEST(PopupMenu, EntriesWithoutHandlersDoNothing)
{
    qint16 WinOnTop = 0;
    PopupMenu popup({}, WinOnTop);
    QList<Entry> leaves;
    QList<QAction *> headers;
    collect(*popup.menu(), {}, leaves, headers);
    for (const Entry &e : leaves)
        e.action->trigger();
    EXPECT_EQ(WinOnTop, 1);
}

} // namespace
