#include "core/menumodel.h"

#include <gtest/gtest.h>

namespace {

// The menu tree is checked as built, in the popup menu's own test.
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
