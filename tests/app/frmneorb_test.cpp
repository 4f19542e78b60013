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

#include <functional>

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

TEST_F(MainWindow, FirstStartShowsThePlayerSkinQuietly)
{
    EXPECT_TRUE(dialogs.messages.isEmpty()) << dialogs.messages.join('|').toStdString();
    EXPECT_EQ(window->settings().Skin, QStringLiteral("default.skin"));
    EXPECT_EQ(window->size(), window->skin().pictures().windowSize);
}

// Each state lights its light and nothing else, and going back puts it out:
// by a command, or by a setting the next clock tick notices.
TEST_F(MainWindow, EachStateLightsItsOwnLight)
{
    EXPECT_TRUE(lightShown(22)) << "media-file mode";
    Settings &s = window->settings();
    const struct
    {
        qint16 skin; // the mode key that shows the light
        int light;
        std::function<void()> on, off;
    } cases[] = {
        {1001, 5, [&] { window->DoIt(25); }, [&] { window->DoIt(25); }},
        {1001, 6, [&] { window->DoIt(26); }, [&] { window->DoIt(26); }},
        {1001, 7, [&] { window->DoIt(27); }, [&] { window->DoIt(27); }},
        {1001, 8, [&] { window->DoIt(28); }, [&] { window->DoIt(28); }},
        {1001, 9, [&] { s.ContPB = 1; }, [&] { s.ContPB = 0; }},
        {1001, 10, [&] { window->DoIt(9); }, [&] { window->DoIt(9); }},
        {1005, 11, [&] { s.Auto = 1; }, [&] { s.Auto = 0; }},
        {1005, 12, [&] { s.Snooze = 1; }, [&] { s.Snooze = 0; }},
        {1005, 20, [&] { s.TimeFmt = 1; }, [&] { s.TimeFmt = 0; }},
        {1005, 21, [&] { window->DoIt(72); }, [&] { window->DoIt(75); }},
    };
    const auto litNow = [&] {
        QList<int> lit;
        for (int n = 1; n <= 22; ++n)
            if (lightShown(n))
                lit << n;
        return lit;
    };
    for (const auto &c : cases) {
        window->DoIt(c.skin);
        ASSERT_TRUE(window->skin().light(c.light)) << "the shipped skin places light " << c.light;
        const QList<int> before = litNow();
        EXPECT_FALSE(before.contains(c.light));
        c.on();
        EXPECT_TRUE(QTest::qWaitFor([&] { return lightShown(c.light); })) << "light " << c.light;
        QList<int> after = litNow();
        after.removeOne(c.light);
        EXPECT_EQ(after, before) << "light " << c.light << " alone";
        c.off();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !lightShown(c.light); })) << "light " << c.light;
    }
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

TEST_F(MainWindow, StartMuteStartsMutedAndCommand9BringsTheSoundBack)
{
    window.reset();
    store.values["config/startmute"] = "1";
    start();
    EXPECT_TRUE(lightShown(10));
    window->DoIt(9);
    EXPECT_FALSE(lightShown(10));
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
