#include "core/menumodel.h"

#include "support/printers.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

using A = MenuEntry::Action;

// Which caption runs which command is the menu's own table; here every entry
// must lead somewhere and the skin slots must count up.
TEST(PopupMenu, EveryEntryLeadsSomewhereAndSkinSlotsCountUp)
{
    EXPECT_EQ(popupMenuTitle(), QStringLiteral("Popup Menu"));
    const std::vector<MenuEntry> menu = popupMenu();
    ASSERT_FALSE(menu.empty());
    EXPECT_EQ(std::tuple(menu.back().caption, menu.back().value), std::tuple(QString("&Quit"), 1));
    QStringList top;
    int onTop = 0;
    for (const MenuEntry &e : menu) {
        top << e.caption;
        EXPECT_EQ(e.children.empty(), e.action != A::Submenu) << e.caption.toStdString();
        QStringList captions;
        for (std::size_t i = 0; i < e.children.size(); ++i) {
            const MenuEntry &child = e.children[i];
            captions << child.caption;
            EXPECT_TRUE(child.children.empty());
            if (child.action == A::FavouriteSkin)
                EXPECT_EQ(child.value, int(i)) << child.caption.toStdString();
            else
                EXPECT_TRUE(child.action == A::Command && child.value >= 1 && child.value <= 151)
                    << child.caption.toStdString();
        }
        EXPECT_EQ(captions.removeDuplicates(), 0) << e.caption.toStdString();
        onTop += e.action == A::AlwaysOnTop;
    }
    EXPECT_EQ(top.removeDuplicates(), 0);
    EXPECT_EQ(onTop, 1);
    EXPECT_EQ(menu[2].children.size(), 10u) << "the favourite skin slots";
}

TEST(PopupMenu, AlwaysOnTopWritesOneMinusTheValue)
{
    const std::tuple<qint16, qint16, bool> cases[] = {
        // clang-format off
        {0, 1, false}, {1, 0, true}, {-1, 2, false}, {2, -1, false}, {-32766, 32767, false},
        // 1 minus these does not fit in 16 bits: the value stays.
        {-32767, -32767, false}, {-32768, -32768, false},
        // clang-format on
    };
    for (const auto &[stored, after, onBefore] : cases) {
        EXPECT_EQ(toggledOnTop(stored), after) << stored;
        EXPECT_EQ(isOnTop(stored), onBefore) << stored;
    }
}

} // namespace
