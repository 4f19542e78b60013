#include "app/velto.h"

#include "support/loopbackserver.h"
#include "support/shippedwindow.h"
#include "support/testmedia.h"

#include <gtest/gtest.h>

namespace {

// Where the web radio and the FM tuner meet the rest of the program: the
// command line, the schedule and the player. No address here leaves the
// machine; port 9 on 127.0.0.1 refuses every connection.
class RadioModes : public ::testing::Test, protected ShippedWindow
{
protected:
    const QString nowhere = QStringLiteral("http://127.0.0.1:9/stream");
};

} // namespace

// On the command line and handed to the running program: stations go to the
// web radio, files to the player.
TEST_F(RadioModes, WhatIsOpenedGoesWhereItBelongs)
{
    const QString song = home.write(QStringLiteral("song.mp3"), "x");
    const QString mixed =
        home.write(QStringLiteral("mixed.m3u"), (song + "\n" + nowhere + "\n").toUtf8());
    const QString pls =
        home.write(QStringLiteral("listen.pls"),
                   "[playlist]\nFile1=" + nowhere.toUtf8() + "\nFile2=" + nowhere.toUtf8() + "2\n");
    const struct
    {
        const char *what;
        QString path;
        bool onCommandLine, radio;
        QString plays;
        int entries;
    } cases[] = {
        {"a station's playlist at start", pls, true, true, nowhere, 0},
        {"a playlist with files at start", mixed, true, false, {}, 2},
        // While running, the player's cases first: a station switches the skin for good.
        {"a playlist with files", mixed, false, false, {}, 0},
        {"a station's playlist", pls, false, true, nowhere, 0},
    };
    bool running = false;
    for (const auto &c : cases) {
        if (c.onCommandLine || !running) {
            velto.reset();
            start(c.onCommandLine ? QStringList{c.path} : QStringList{});
            showFirstFrame();
            running = !c.onCommandLine;
        }
        if (!c.onCommandLine) {
            EXPECT_EQ(velto->openRadio(c.path), c.radio) << c.what;
        }
        EXPECT_EQ(velto->settings().Skin,
                  c.radio ? QStringLiteral("webradio.skin") : QStringLiteral("default.skin"))
            << c.what;
        EXPECT_EQ(velto->webRadio().current().location, c.plays) << c.what;
        EXPECT_EQ(velto->playlist().PlPath.size(), c.entries) << c.what;
    }
}

// A file opened from outside brings the player back from any other mode,
// at start and while running, unless a station was named before it.
TEST_F(RadioModes, OpenedFilesBringThePlayerBack)
{
    const QString song = home.write(QStringLiteral("song.mp3"), "x");
    const QString player = QStringLiteral("default.skin");
    const QString radio = QStringLiteral("webradio.skin");
    start();
    showFirstFrame();
    ASSERT_TRUE(velto->openRadio(nowhere));
    ASSERT_EQ(velto->settings().Skin, radio);
    velto->openFiles({song}, false);
    EXPECT_EQ(velto->settings().Skin, player);
    EXPECT_TRUE(QTest::qWaitFor([&] { return velto->playlist().PlPath.size() == 1; }, 5000));

    const struct
    {
        const char *what;
        QStringList names;
        QString skin;
    } starts[] = {
        {"a file, the radio shown last", {song}, player},
        {"a station before a file", {nowhere, song}, radio},
    };
    for (const auto &c : starts) {
        ASSERT_TRUE(velto->openRadio(nowhere)) << "the radio's skin is the one saved";
        velto.reset();
        start(c.names);
        EXPECT_EQ(velto->settings().Skin, c.skin) << c.what;
    }
}

TEST_F(RadioModes, ScheduledPresetsWakeWithTheRadio)
{
    qputenv("VELTO_AUDIO", "null");
    LoopbackServer::Stream o;
    o.mp3 = LoopbackServer::toneMp3();
    if (o.mp3.isEmpty())
        GTEST_SKIP() << "no ffmpeg to make the stream";
    LoopbackServer station(o);
    ASSERT_TRUE(station.listening());
    store.values["config/auto"] = "1";
    home.write(QStringLiteral("data/velto/autolist.txt"), "E 07:30 08:00 02\n");
    home.write(QStringLiteral("data/velto/webradio.txt"),
               ("First @ " + nowhere + "\nSecond @ " + station.url() + "\n").toUtf8());
    start();
    showFirstFrame();
    ASSERT_TRUE(tickAt(QTime(7, 30)));
    // The fade reads the clock as well: wait for what the tick does, not for the tick.
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return velto->webRadio().playState() == WebRadio::Playing; }, 15000));
    EXPECT_EQ(velto->settings().Skin, QStringLiteral("webradio.skin"));
    EXPECT_EQ(velto->webRadio().current().name, QStringLiteral("Second"));
    // The tick acts when the seconds turn to "00": a second before, first.
    ASSERT_TRUE(tickAt(QTime(7, 59, 59)));
    clock.time = QDateTime(clock.time.date(), QTime(8, 0));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return velto->webRadio().status() == QLatin1String("Stopped"); }, 5000))
        << "switching off stops it";
    qunsetenv("VELTO_AUDIO");

    // With the FM tuner in use, preset 2 is the FM preset numbered 2.
    velto.reset();
    dialogs.messages.clear();
    store.values["config/fmenable"] = "1";
    home.write(QStringLiteral("data/velto/stations.txt"), "101.5 A\n102.0 B\n103.0 C\n");
    start();
    ASSERT_TRUE(tickAt(QTime(7, 29, 59)));
    clock.time = QDateTime(clock.time.date(), QTime(7, 30));
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return velto->settings().Skin == QLatin1String("fmtuner.skin"); }, 5000))
        << velto->settings().Skin.toStdString();
    EXPECT_EQ(velto->fmTuner().currentPreset(), 2);
    EXPECT_EQ(velto->fmTuner().frequency(), 1030);
    EXPECT_EQ(dialogs.messages.size(), 1) << "no radio device here, which the mode says once";
}

TEST_F(RadioModes, ThePlayerAndTheRadioNeverPlayAtOnce)
{
    qputenv("VELTO_AUDIO", "null");
    start();
    TestMedia media;
    const QString tone = media.sineWav(QStringLiteral("tone.wav"), 20000);
    velto->player().addOpened(tone);
    showFirstFrame();
    velto->webRadio().playAddress(nowhere);
    ASSERT_TRUE(velto->webRadio().active());
    velto->DoIt(12);
    EXPECT_TRUE(QTest::qWaitFor([&] { return velto->player().state().playing; }, 10000));
    EXPECT_FALSE(velto->webRadio().active()) << "the playlist took over";

    velto->webRadio().playAddress(nowhere);
    EXPECT_FALSE(velto->player().state().playing) << "and the radio takes over from it";
    qunsetenv("VELTO_AUDIO");
}
