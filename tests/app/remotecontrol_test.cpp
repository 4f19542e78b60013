#include "app/nowplaying.h"
#include "app/remotecontrol.h"

#include "support/beats.h"
#include "support/shippedwindow.h"
#include "support/testmedia.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <gtest/gtest.h>

namespace {

using Action = RemoteRequest::Action;

TEST(RemoteRequest, CommandLinesBecomeRequestsThatSurviveTheWire)
{
    struct Case
    {
        QStringList args;
        RemoteRequest expected;
    };
    const QString here = QStringLiteral("/music");
    const QList<Case> cases = {
        {{}, {Action::Open, here, {}}},
        {{"a.mp3", "b c.ogg"}, {Action::Open, here, {"a.mp3", "b c.ogg"}}},
        {{"--play", "a.mp3"}, {Action::Play, here, {"a.mp3"}}},
        {{"--enqueue", "line\nbreak.mp3", "\xc3\xa9t\xc3\xa9.flac"},
         {Action::Enqueue, here, {"line\nbreak.mp3", QStringLiteral("\u00e9t\u00e9.flac")}}},
        {{"--play-pause"}, {Action::PlayPause, here, {}}},
        {{"--next"}, {Action::Next, here, {}}},
        {{"--prev"}, {Action::Previous, here, {}}},
        {{"--stop"}, {Action::Stop, here, {}}},
        {{"--status"}, {Action::Status, here, {}}},
    };
    for (const Case &c : cases) {
        QCommandLineParser parser;
        parser.addOption(QCommandLineOption(QStringLiteral("play")));
        addRemoteOptions(parser);
        ASSERT_TRUE(parser.parse(QStringList{QStringLiteral("velto")} + c.args));
        const RemoteRequest request = requestFrom(parser, here);
        EXPECT_EQ(request, c.expected) << c.args.join(' ').toStdString();
        const QByteArray wire = encodeRequest(request);
        EXPECT_FALSE(wire.contains('\n')) << "one line on the socket";
        EXPECT_EQ(decodeRequest(wire), c.expected) << wire.toStdString();
    }
    const RemoteAnswer answer{true, QStringLiteral("Playing\nA - B\n0:01 / 0:02\n")};
    EXPECT_FALSE(encodeAnswer(answer).contains('\n'));
    EXPECT_EQ(decodeAnswer(encodeAnswer(answer)), answer);
}

TEST(RemoteRequest, AnythingElseIsNoRequest)
{
    const QList<QByteArray> garbage = {
        "",
        "play a.mp3",
        QByteArray("\x00\xff\xfe", 3),
        "[]",
        "{}",
        R"({"velto":2,"do":"next","folder":"/","names":[]})",
        R"({"velto":1,"do":"explode","folder":"/","names":[]})",
        R"({"velto":1,"do":"next","folder":7,"names":[]})",
        R"({"velto":1,"do":"play","folder":"/","names":"a.mp3"})",
        R"({"velto":1,"do":"play","folder":"/","names":["a",3]})",
        R"({"velto":1,"do":"play","folder":"/","names":["a"])",
    };
    for (const QByteArray &bytes : garbage)
        EXPECT_EQ(decodeRequest(bytes), std::nullopt) << bytes.toStdString();
    EXPECT_EQ(decodeAnswer("{\"ok\":1}"), std::nullopt);
}

TEST(NowPlaying, StatusTextReadsStateTitleAndTimes)
{
    NowPlaying now;
    EXPECT_EQ(statusText(now), QStringLiteral("Stopped\n\n0:00 / 0:00\n"));
    now.state = NowPlaying::State::Paused;
    now.title = QStringLiteral("Song");
    now.positionMs = 61999;
    now.lengthMs = 3 * 3600 * 1000 + 5000;
    EXPECT_EQ(statusText(now), QStringLiteral("Paused\nSong\n1:01 / 3:00:05\n"));
    now.artist = QStringLiteral("Band");
    now.state = NowPlaying::State::Playing;
    EXPECT_EQ(statusText(now).section('\n', 0, 1), QStringLiteral("Playing\nBand - Song"));
}

// The running program's side, on the shipped window with the real, silent engine.
class RemoteControlTest : public ::testing::Test, protected ShippedWindow
{
protected:
    static void SetUpTestSuite() { qputenv("VELTO_AUDIO", "null"); }

    RemoteControlTest()
    {
        start();
        remote = std::make_unique<RemoteControl>(*velto, dialogs);
        media.sineWav(QStringLiteral("one.wav"), 4000, 440);
        media.sineWav(QStringLiteral("two.wav"), 4000, 550);
    }

    RemoteAnswer ask(Action action, QStringList names = {})
    {
        const QString folder = QFileInfo(media.file(QStringLiteral("one.wav"))).absolutePath();
        return remote->answer(RemoteRequest{action, folder, std::move(names)});
    }
    PlaylistState &list() { return velto->playlist(); }
    NowPlaying now() { return nowPlaying(velto->player(), velto->playlist()); }
    bool waitFor(NowPlaying::State state, int entry)
    {
        return QTest::qWaitFor([&] { return now().state == state && now().entry == entry; }, 10000);
    }

    TestMedia media;
    std::unique_ptr<RemoteControl> remote;
};

TEST_F(RemoteControlTest, HandedFilesAreAddedAndPlayedAsTheOptionSaysAndGarbageIsRefused)
{
    // Names are relative to the asking start's folder.
    EXPECT_EQ(ask(Action::Enqueue, {"one.wav"}), (RemoteAnswer{true, {}}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return list().PlPath.size() == 1; }, 5000));
    EXPECT_EQ(list().PlPath, QStringList{media.file("one.wav")});
    EXPECT_EQ(now().state, NowPlaying::State::Stopped);

    ask(Action::Play, {"two.wav"});
    ASSERT_TRUE(waitFor(NowPlaying::State::Playing, 2));
    EXPECT_EQ(list().PlPath.size(), 2);

    // A missing name says so in the running window and adds nothing.
    ask(Action::Enqueue, {"gone.wav"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !dialogs.messages.isEmpty(); }, 5000));
    EXPECT_EQ(dialogs.messages.last(),
              QStringLiteral("File not found:\r") + media.file("gone.wav"));
    EXPECT_EQ(list().PlPath.size(), 2);

    // Bytes that are no request get an answer that says so and change nothing.
    const auto garbage = decodeAnswer(remote->answer(QByteArray("\xff\x00{", 3)));
    ASSERT_TRUE(garbage);
    EXPECT_FALSE(garbage->ok);
    EXPECT_FALSE(garbage->text.isEmpty());
    EXPECT_EQ(list().PlPath.size(), 2);
}

TEST_F(RemoteControlTest, PlainNamesPlayOnlyWhenStartPlayingIsOn)
{
    velto->settings().AutoPlay = 0;
    ask(Action::Open, {"one.wav"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return list().CurTrack == 1; }, 5000));
    EXPECT_TRUE(waitBeats(100));
    EXPECT_EQ(now().state, NowPlaying::State::Stopped);

    velto->settings().AutoPlay = 1;
    ask(Action::Open, {"two.wav"});
    EXPECT_TRUE(waitFor(NowPlaying::State::Playing, 2));
}

} // namespace

// A station handed over goes to the web radio, never into the playlist.
TEST_F(RemoteControlTest, AHandedStationPlaysOnTheWebRadio)
{
    const qsizetype before = list().PlPath.size();
    ask(Action::Enqueue, {"http://127.0.0.1:9/stream"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return velto->webRadio().active(); }, 5000));
    EXPECT_EQ(list().PlPath.size(), before);
    velto->webRadio().WRStop();
}
