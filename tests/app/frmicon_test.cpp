#include "app/frmicon.h"
#include "app/popupmenu.h"

#include "support/printers.h"

#include <QMenu>
#include <QWidget>
#include <gtest/gtest.h>

namespace {

struct Tray
{
    qint16 WinOnTop = 0;
    QWidget window{nullptr, Qt::Window | Qt::FramelessWindowHint};
    PopupMenu menu{{}, WinOnTop};
    frmIcon icon{window, menu};
};

TEST(TrayIcon, BringsBackTheWindowAndHidesItOnCloseOnlyWhenItCan)
{
    Tray tray;
    EXPECT_EQ(tray.icon.icon().contextMenu(), tray.menu.menu());

    // Clicking brings back a minimised or hidden window.
    const std::pair<QSystemTrayIcon::ActivationReason, bool> cases[] = {
        {QSystemTrayIcon::Trigger, true},
        {QSystemTrayIcon::Context, false},
    };
    for (const auto &[reason, restores] : cases) {
        Tray tray;
        tray.window.showMinimized();
        emit tray.icon.icon().activated(reason);
        EXPECT_EQ(tray.window.isMinimized(), !restores) << int(reason);
        EXPECT_TRUE(tray.window.isVisible());

        tray.window.hide();
        emit tray.icon.icon().activated(reason);
        EXPECT_EQ(tray.window.isVisible(), restores) << int(reason);
    }

    // Closing hides only with exit mode 1 and an icon to come back by.
    EXPECT_TRUE(closeHidesToTray(1, true));
    EXPECT_FALSE(closeHidesToTray(1, false));
    EXPECT_FALSE(closeHidesToTray(2, true));

    // The test platform has no notification area: closing always quits.
    tray.icon.show();
    EXPECT_FALSE(frmIcon::available());
    EXPECT_FALSE(tray.icon.isShown());
    EXPECT_FALSE(tray.icon.hidesOnClose(1));
}

} // namespace
