#include "app/windowflags.h"

#include <QWidget>
#include <QWindow>
#include <gtest/gtest.h>

namespace {

TEST(SetOnTop, SwitchesTheStayOnTopHintAndNothingElse)
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
}

TEST(SetOnTop, LeavesAWindowNotYetShownHiddenUntilItIsShown)
{
    QWidget window(nullptr, Qt::Window | Qt::FramelessWindowHint);
    SetOnTop(window, true);
    EXPECT_FALSE(window.isVisible());
    window.show();
    ASSERT_NE(window.windowHandle(), nullptr);
    EXPECT_TRUE(window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_TRUE(window.windowHandle()->flags().testFlag(Qt::FramelessWindowHint));
}

} // namespace
