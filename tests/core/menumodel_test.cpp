#include "core/menumodel.h"

#include "support/printers.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

using A = MenuEntry::Action;

const MenuEntry &topEntry(const std::vector<MenuEntry> &menu, const QString &caption)
{
    for (const MenuEntry &e : menu) {
        if (e.caption == caption)
            return e;
    }
    static const MenuEntry missing{QStringLiteral("<missing>"), A::Command, -1, {}};
    return missing;
}

TEST(PopupMenu, TopLevelEntriesInOrderWithTheirKinds)
{
    const std::vector<MenuEntry> menu = popupMenu();
    QStringList seen;
    for (const MenuEntry &e : menu) {
        const QString what = e.action == A::Submenu       ? QStringLiteral(">")
                             : e.action == A::AlwaysOnTop ? QStringLiteral("on-top")
                                                          : QString::number(e.value);
        seen << e.caption + ' ' + what;
    }
    EXPECT_EQ(seen, (QStringList{"&Preferences... 5", "Select S&kin... 6", "&Favorite Skin >",
                                 "&Player >", "&Calculator >", "&Notepad >", "&Timers >",
                                 "&FM Tuner >", "&Web Browser >", "&Minimize Window 2",
                                 "&Always On Top on-top", "&Quit 1"}));
    for (const MenuEntry &e : menu)
        EXPECT_EQ(e.children.empty(), e.action != A::Submenu) << e.caption.toStdString();
    EXPECT_EQ(popupMenuTitle(), QStringLiteral("Popup Menu"));
}

TEST(PopupMenu, SubmenusBindTheirCommandsInOrder)
{
    const std::vector<MenuEntry> menu = popupMenu();
    const struct
    {
        QString submenu;
        QList<int> commands;
    } cases[] = {
        {"&Player", {12, 10, 11, 15, 14, 35, 21, 22, 20, 23, 24, 37, 150}},
        {"&Calculator", {69}},
        {"&Notepad", {76, 77, 78, 79}},
        {"&Timers", {70, 71, 72, 73, 74, 75}},
        {"&FM Tuner", {80, 81, 82, 83, 84, 85}},
        {"&Web Browser", {101, 102, 103, 104, 105, 106}},
    };
    for (const auto &c : cases) {
        QList<int> seen;
        for (const MenuEntry &e : topEntry(menu, c.submenu).children) {
            EXPECT_EQ(e.action, A::Command) << e.caption.toStdString();
            seen << e.value;
        }
        EXPECT_EQ(seen, c.commands) << c.submenu.toStdString();
    }
}

TEST(PopupMenu, FavouriteSkinsNameTheTenSlotsInOrder)
{
    const std::vector<MenuEntry> menu = popupMenu();
    const auto &slotEntries = topEntry(menu, QStringLiteral("&Favorite Skin")).children;
    QStringList captions;
    for (std::size_t i = 0; i < slotEntries.size(); ++i) {
        EXPECT_EQ(slotEntries[i].action, A::FavouriteSkin);
        EXPECT_EQ(slotEntries[i].value, int(i));
        captions << slotEntries[i].caption;
    }
    EXPECT_EQ(captions,
              (QStringList{"F&avorite", "&Player", "&Calculator", "&Notepad", "Cloc&k", "&FM Tuner",
                           "Web Browser", "Web &Radio", "Other &1", "Other &2"}));
}

TEST(PopupMenu, AlwaysOnTopWritesOneMinusTheValue)
{
    const struct
    {
        qint16 stored;
        qint16 after;
        bool onBefore;
    } cases[] = {
        {0, 1, false},
        {1, 0, true},
        {-1, 2, false},
        {2, -1, false},
        {32767, -32766, false},
        {-32766, 32767, false},
        // 1 minus these does not fit in 16 bits: the value stays.
        {-32767, -32767, false},
        {-32768, -32768, false},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(toggledOnTop(c.stored), c.after) << c.stored;
        EXPECT_EQ(isOnTop(c.stored), c.onBefore) << c.stored;
    }
}

} // namespace
