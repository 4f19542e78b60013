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

// --play, --next and --status on the wire are the end-to-end test's.
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
        {{"--enqueue", "line\nbreak.mp3", "\xc3\xa9t\xc3\xa9.flac"},
         {Action::Enqueue, here, {"line\nbreak.mp3", QStringLiteral("\u00e9t\u00e9.flac")}}},
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
        R"({"velto":2,"do":"next","folder":"/","names":[]})",
        R"({"velto":1,"do":"play","folder":"/","names":["a",3]})",
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
    NowPlaying now() { return nowPlaying(velto->player(), velto->playlist()); }
    bool waitFor(NowPlaying::State state, int entry)
    {
        return QTest::qWaitFor([&] { return now().state == state && now().entry == entry; }, 10000);
    }

    TestMedia media;
    std::unique_ptr<RemoteControl> remote;
};

// Names are relative to the asking start's folder; a plain start plays only
// when "Start playing" is on. A station goes where RadioModes' test says.
TEST_F(RemoteControlTest, HandedNamesAreAddedPlayedOrRefusedAsTheRequestSays)
{
    const struct
    {
        const char *what;
        Action action;
        const char *name;
        qint16 autoPlay;
        int entries;
        NowPlaying::State state;
    } cases[] = {
        {"enqueued", Action::Enqueue, "one.wav", 1, 1, NowPlaying::State::Stopped},
        {"opened, start playing off", Action::Open, "two.wav", 0, 2, NowPlaying::State::Stopped},
        {"opened, start playing on", Action::Open, "one.wav", 1, 3, NowPlaying::State::Playing},
        {"missing", Action::Enqueue, "gone.wav", 1, 3, NowPlaying::State::Playing},
    };
    for (const auto &c : cases) {
        velto->settings().AutoPlay = c.autoPlay;
        EXPECT_EQ(ask(c.action, {QString::fromLatin1(c.name)}), (RemoteAnswer{true, {}})) << c.what;
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return velto->playlist().PlPath.size() == c.entries; }, 5000))
            << c.what;
        if (c.state == NowPlaying::State::Playing)
            EXPECT_TRUE(waitFor(c.state, c.entries)) << c.what;
        else
            EXPECT_TRUE(waitBeats(100) && now().state == c.state) << c.what;
    }
    const QStringList missing{"File not found:\r" + media.file("gone.wav")};
    EXPECT_TRUE(QTest::qWaitFor([&] { return dialogs.messages == missing; }, 5000))
        << dialogs.messages.join('|').toStdString();

    // Bytes that are no request get an answer that says so.
    const auto garbage = decodeAnswer(remote->answer(QByteArray("\xff\x00{", 3)));
    ASSERT_TRUE(garbage);
    EXPECT_FALSE(garbage->ok);
    EXPECT_FALSE(garbage->text.isEmpty());
}

} // namespace
