#include "app/frmneorb.h"
#include "skin/skinlightwidget.h"

#include "support/fakes.h"
#include "support/shippedwindow.h"
#include "support/temphome.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// The real main window on the shipped skins, with scripted dialogs and clock.
class MainWindow : public ::testing::Test, protected ShippedWindow
{
protected:
    MainWindow() { start(); }

    bool lightShown(int n) const
    {
        const SkinLightWidget *light = window->skin().light(n);
        return light && light->isVisibleTo(window.get());
    }
};

} // namespace

TEST_F(MainWindow, FirstStartShowsThePlayerSkinQuietlyAndToggleCommandsLightTheirLights)
{
    EXPECT_TRUE(dialogs.messages.isEmpty()) << dialogs.messages.join('|').toStdString();
    EXPECT_EQ(window->settings().Skin, QStringLiteral("default.skin"));
    EXPECT_EQ(window->size(), window->skin().pictures().windowSize);
    EXPECT_TRUE(lightShown(22)) << "media-file mode is lit";

    // Toggle commands light their lights.
    EXPECT_FALSE(lightShown(5));
    window->DoIt(25); // intro scan
    EXPECT_TRUE(lightShown(5));
    window->DoIt(28); // shuffle
    EXPECT_TRUE(lightShown(8));
    window->DoIt(25);
    EXPECT_FALSE(lightShown(5));
}

TEST_F(MainWindow, ModeKeysLoadTheSkinBesideTheCurrentOneAndCtrlQShutsDown)
{
    window->DoIt(1003); // the calculator's key on the player skin
    EXPECT_EQ(window->settings().Skin, QStringLiteral("calculator.skin"));
    EXPECT_TRUE(dialogs.messages.isEmpty());
    window->DoIt(1011); // link commands never open anything
    window->DoIt(1001); // back to the player
    EXPECT_EQ(window->settings().Skin, QStringLiteral("default.skin"));
    window->DoIt(1003);
    QTest::keyClick(window.get(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(store.values.value("config/skin"), QStringLiteral("calculator.skin"))
        << "the skin in use is what the next start shows";
}

TEST_F(MainWindow, CommandThirtyEightOpensThePopupMenuAndItsEntriesReachTheWindow)
{
    showFirstFrame();
    window->DoIt(38);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->title(), QStringLiteral("Popup Menu"));
    QAction *onTop = nullptr;
    for (QAction *a : menu->actions())
        onTop = a->text() == QStringLiteral("&Always On Top") ? a : onTop;
    ASSERT_NE(onTop, nullptr);
    EXPECT_FALSE(onTop->isChecked());
    onTop->trigger();
    EXPECT_EQ(window->settings().WinOnTop, 1);
    EXPECT_TRUE(window->windowFlags() & Qt::WindowStaysOnTopHint);
    menu->hide();
}

TEST_F(MainWindow, ScheduledSwitchOffMinimisesWithSnoozeHide)
{
    window.reset();
    store.values["config/auto"] = "1";
    store.values["config/snoozehide"] = "1";
    home.write(QStringLiteral("data/velto/autolist.txt"), "E 07:29 07:30 00\n");
    start();
    window->show();
    ASSERT_TRUE(tickAt(QTime(7, 29, 59)));
    EXPECT_FALSE(window->isMinimized());
    ASSERT_TRUE(tickAt(QTime(7, 30)));
    EXPECT_TRUE(window->isMinimized()) << "07:30 is the entry's off time";
}

TEST_F(MainWindow, WhatTheCommandLineOpensBecomesTheCurrentEntry)
{
    const QString a = home.write(QStringLiteral("music/a.mp3"), "x");
    const QString b = home.write(QStringLiteral("music/b.mp3"), "x");
    const QString list =
        home.write(QStringLiteral("music/list.m3u"), (a + "\n" + b + "\n").toUtf8());
    window->AddOpened(list);
    EXPECT_EQ(window->playlist().CurTrack, 1) << "not the last entry";
    window->playlist().CurTrack = 2;
    window->AddOpened(a);
    EXPECT_EQ(window->playlist().CurTrack, 2) << "an entry already current stays so";

    window->settings().ValidExt = QStringLiteral("flac");
    home.write(QStringLiteral("music/c.flac"), "x");
    const int before = int(window->playlist().PlPath.size());
    window->AddOpened(home.file(QStringLiteral("music")));
    // Scanned in the background, as a folder the user adds.
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->playlist().PlPath.size() > before; }));
    EXPECT_EQ(window->playlist().PlPath.mid(before),
              QStringList{home.file(QStringLiteral("music/c.flac"))})
        << "a folder brings what the preferences accept";
}
