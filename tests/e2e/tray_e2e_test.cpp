#include "e2e.h"

#include <QStandardPaths>

namespace {

const QSize kPanel(100, 32); // trayer sits in the top right corner

// A notification area on the test's X server: the panel's geometry once it
// is mapped, or an empty rectangle.
QRect startTrayer(Companion &trayer, int screenWidth)
{
    trayer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    trayer.start(QStringLiteral("trayer"),
                 {"--edge", "top", "--align", "right", "--widthtype", "pixel", "--width",
                  QString::number(kPanel.width()), "--heighttype", "pixel", "--height",
                  QString::number(kPanel.height()), "--transparent", "false", "--SetDockType",
                  "false", "--SetPartialStrut", "false"});
    if (!trayer.waitForStarted(5000))
        return {};
    QRect panel;
    waitUntil([&] {
        const QString ids = xdotool(
            {"search", "--onlyvisible", "--pid", QString::number(trayer.processId())}, 2000);
        for (const QString &id : ids.split('\n', Qt::SkipEmptyParts)) {
            const QRect g = windowGeometry(id);
            if (g.size() == kPanel && g.right() == screenWidth - 1 && g.top() == 0)
                panel = g;
        }
        return !panel.isEmpty() || trayer.state() != QProcess::Running;
    });
    return panel;
}

} // namespace

using TrayMenu = E2e;

TEST_F(TrayMenu, QuitFromTheIconMenuEndsThroughTheNormalShutDown)
{
    if (QStandardPaths::findExecutable(QStringLiteral("trayer")).isEmpty())
        GTEST_SKIP() << "no trayer to give the X server a notification area";
    Companion trayer;
    const QRect panel = startTrayer(trayer, grabScreen().width());
    ASSERT_FALSE(panel.isEmpty()) << "trayer did not show its panel";
    VeltoProcess velto;
    ASSERT_TRUE(velto.start());
    // Velto's window that sits inside the panel is its tray icon.
    QString icon;
    ASSERT_TRUE(waitUntil([&] {
        for (const QString &id : velto.windows(2000))
            if (const QRect g = windowGeometry(id); !g.isEmpty() && panel.contains(g))
                icon = id;
        return !icon.isEmpty();
    })) << "no tray icon in the panel";
    // The menu: a new window of velto's, tall enough to list its twelve entries.
    const QStringList before = velto.windows(2000);
    click(windowGeometry(icon).center(), "3");
    ASSERT_TRUE(waitUntil([&] {
        for (const QString &id : velto.windows(2000))
            if (!before.contains(id) && windowGeometry(id).height() >= 12 * 10)
                return true;
        return false;
    })) << "no menu after a right click on the icon";
    key(QStringLiteral("q"));
    ASSERT_TRUE(velto.waitForExit());
    EXPECT_TRUE(QFile::exists(velto.home(QStringLiteral("config/velto/velto.ini"))));
    EXPECT_TRUE(QFile::exists(velto.home(QStringLiteral("data/velto/playlist.m3u"))));
}
