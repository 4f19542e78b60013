#include "app/windowflags.h"

#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>

namespace {

TEST(SetOnTop, SwitchesTheStayOnTopHintAndNothingElseShownOrNot)
{
    QWidget window(nullptr, Qt::Window | Qt::FramelessWindowHint);
    window.setGeometry(40, 50, 300, 120);
    window.show();
    for (const bool onTop : {true, true, false, false, true}) {
        SetOnTop(window, onTop);
        EXPECT_EQ(window.windowFlags().testFlag(Qt::WindowStaysOnTopHint), onTop);
        EXPECT_TRUE(window.windowFlags().testFlag(Qt::FramelessWindowHint));
        ASSERT_NE(window.windowHandle(), nullptr);
        // The native window is told too, not only the widget's record.
        EXPECT_EQ(window.windowHandle()->flags(), window.windowFlags());
        EXPECT_EQ(window.geometry(), QRect(40, 50, 300, 120));
        EXPECT_TRUE(window.isVisible());
    }

    QWidget later(nullptr, Qt::Window | Qt::FramelessWindowHint);
    SetOnTop(later, true);
    EXPECT_FALSE(later.isVisible()) << "a window not yet shown stays hidden";
    EXPECT_TRUE(later.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

} // namespace
