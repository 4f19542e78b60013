#include "app/popupmenu.h"
#include "core/menumodel.h"

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

QAction *findEntry(const QMenu &menu, const QString &caption)
{
    for (QAction *a : menu.actions()) {
        if (a->text() == caption)
            return a;
    }
    return nullptr;
}

// The captions and numbers are the model's (menumodel_test); here each built
// entry must match its model entry and ask for that entry's action alone.
void checkAgainstModel(const QMenu &menu, const std::vector<MenuEntry> &model, Calls &calls,
                       int &submenus)
{
    using A = MenuEntry::Action;
    const QList<QAction *> actions = menu.actions();
    ASSERT_EQ(actions.size(), qsizetype(model.size())) << menu.title().toStdString();
    for (std::size_t i = 0; i < model.size(); ++i) {
        const MenuEntry &e = model[i];
        QAction *a = actions[qsizetype(i)];
        const std::string where = e.caption.toStdString();
        EXPECT_EQ(a->text(), e.caption) << where;
        calls.seen.clear();
        const qint16 before = calls.WinOnTop;
        a->trigger();
        if (e.action == A::Submenu) {
            ASSERT_NE(a->menu(), nullptr) << where;
            ++submenus;
            a->menu()->popup(QPoint(10, 10));
            a->menu()->hide();
            EXPECT_EQ(calls.seen, QStringList()) << where << ": a header runs nothing";
            checkAgainstModel(*a->menu(), e.children, calls, submenus);
            continue;
        }
        const QString expected = e.action == A::Command ? QStringLiteral("DoIt %1").arg(e.value)
                                 : e.action == A::FavouriteSkin
                                     ? QStringLiteral("SelFSkin %1").arg(e.value)
                                     : QStringLiteral("SetOnTop at %1").arg(toggledOnTop(before));
        EXPECT_EQ(calls.seen, QStringList{expected}) << where;
    }
}

TEST(PopupMenu, EveryEntryAsksForItsOwnActionAndAlwaysOnTopShowsTheValueAtOpening)
{
    Calls calls;
    PopupMenu popup(calls.handlers(), calls.WinOnTop);
    int submenus = 0;
    checkAgainstModel(*popup.menu(), popupMenu(), calls, submenus);
    EXPECT_EQ(submenus, 7) << "a model emptied by mistake fails here";

    // Always on top is checked only while WinOnTop is 1 when the menu opens.
    calls.seen.clear();
    QAction *onTop = findEntry(*popup.menu(), QStringLiteral("&Always On Top"));
    ASSERT_NE(onTop, nullptr);
    EXPECT_TRUE(onTop->isCheckable());
    // The same menu opened again and again: the value may change in between.
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
