#include "app/frmneorb.h"
#include "skin/skinlightwidget.h"
#include "skin/skinlistarea.h"

#include "support/shippedwindow.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

class MainWindow : public ::testing::Test, protected ShippedWindow
{
protected:
    MainWindow() { start(); }

    bool lightShown(int n) const
    {
        const SkinLightWidget *light = window->skin().light(n);
        return light && light->isVisibleTo(window);
    }
};

} // namespace

// Each state lights its light and nothing else, and going back puts it out:
// by a command, or by a setting the next clock tick notices.
TEST_F(MainWindow, EachStateLightsItsOwnLight)
{
    EXPECT_TRUE(lightShown(22)) << "media-file mode";
    Settings &s = velto->settings();
    const struct
    {
        qint16 skin; // the mode key that shows the light
        int light;
        std::function<void()> on, off;
    } cases[] = {
        {1001, 5, [&] { velto->DoIt(25); }, [&] { velto->DoIt(25); }},
        {1001, 8, [&] { velto->DoIt(28); }, [&] { velto->DoIt(28); }},
        {1001, 9, [&] { s.ContPB = 1; }, [&] { s.ContPB = 0; }},
        {1001, 10, [&] { velto->DoIt(9); }, [&] { velto->DoIt(9); }},
        {1005, 11, [&] { s.Auto = 1; }, [&] { s.Auto = 0; }},
        {1005, 20, [&] { s.TimeFmt = 1; }, [&] { s.TimeFmt = 0; }},
        {1005, 21, [&] { velto->DoIt(72); }, [&] { velto->DoIt(75); }},
    };
    // A vector: Qt 6.4 compares two empty QLists with a null memcmp.
    const auto litNow = [&] {
        std::vector<int> lit;
        for (int n = 1; n <= 22; ++n)
            if (lightShown(n))
                lit.push_back(n);
        return lit;
    };
    for (const auto &c : cases) {
        velto->DoIt(c.skin);
        ASSERT_TRUE(window->skin().light(c.light)) << "the shipped skin places light " << c.light;
        const std::vector<int> before = litNow();
        EXPECT_EQ(std::count(before.begin(), before.end(), c.light), 0);
        c.on();
        EXPECT_TRUE(QTest::qWaitFor([&] { return lightShown(c.light); })) << "light " << c.light;
        std::vector<int> after = litNow();
        std::erase(after, c.light);
        EXPECT_EQ(after, before) << "light " << c.light << " alone";
        c.off();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !lightShown(c.light); })) << "light " << c.light;
    }
}

TEST_F(MainWindow, CommandThirtyEightOpensThePopupMenuAndItsEntriesReachTheWindow)
{
    showFirstFrame();
    velto->DoIt(38);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    QAction *onTop = nullptr;
    for (QAction *a : menu->actions())
        onTop = a->text() == QStringLiteral("&Always On Top") ? a : onTop;
    ASSERT_NE(onTop, nullptr);
    onTop->trigger();
    EXPECT_EQ(velto->settings().WinOnTop, 1);
    EXPECT_TRUE(window->windowFlags() & Qt::WindowStaysOnTopHint);
    menu->hide();
}

// Keys are the calculator's while its skin shows, from whatever child has the
// focus; elsewhere they keep their meaning. Which key means what is Calculator's test.
TEST_F(MainWindow, CalculatorTakesTheKeysOnlyWhileItsSkinShows)
{
    const auto shown = [&] { return window->skin().label(23); };
    velto->DoIt(1003);
    QTest::keyClicks(window, QStringLiteral("12+3"));
    QTest::keyClick(window, Qt::Key_Return);
    EXPECT_EQ(shown(), QStringLiteral("15"));

    SkinListArea *conversions = window->skin().list(5);
    conversions->setFocus();
    QTest::keyClicks(conversions, QStringLiteral("x3"));
    QTest::keyClick(conversions, Qt::Key_Enter);
    EXPECT_EQ(shown(), QStringLiteral("45")) << "x multiplies; Enter in the list is =";

    velto->DoIt(1001);
    QTest::keyClick(window, Qt::Key_Backspace);
    velto->DoIt(1003);
    EXPECT_EQ(shown(), QStringLiteral("45")) << "the player skin leaves the calculator alone";
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

// A player that only sits there never loads the media engine (tens of MiB):
// it loads when something is about to play, and the play waits for it.
TEST_F(MainWindow, TheMediaEngineLoadsOnlyWhenSomethingIsAboutToPlay)
{
    showFirstFrame();
    EXPECT_FALSE(velto->mediaDevices().requested());
    const QString tone = home.write(QStringLiteral("music/t.wav"), QByteArray(64, '\0'));
    velto->player().addOpened(tone);
    velto->DoIt(12);
    EXPECT_TRUE(QTest::qWaitFor([&] { return velto->mediaDevices().isLoaded(); }, 20000));
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return !velto->player().state().CurDevice.isEmpty(); }, 20000))
        << "the play that waited for it went on";
}

// Command 9 brings the sound back: the lights test.
TEST_F(MainWindow, StartMuteStartsMuted)
{
    velto.reset();
    store.values["config/startmute"] = "1";
    start();
    EXPECT_TRUE(lightShown(10));
}

TEST_F(MainWindow, ScheduledSwitchOffMinimisesWithSnoozeHide)
{
    velto.reset();
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
    velto->player().addOpened(list);
    EXPECT_EQ(velto->playlist().CurTrack, 1) << "not the last entry";
    velto->playlist().CurTrack = 2;
    velto->player().addOpened(a);
    EXPECT_EQ(velto->playlist().CurTrack, 2) << "an entry already current stays so";
}
