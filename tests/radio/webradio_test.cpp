#include "radio/webradio.h"

#include "platform/httpfetch.h"
#include "platform/mediadevicefactory.h"
#include "platform/wavevolume.h"
#include "skin/skinlistarea.h"
#include "skin/skintextfield.h"

#include "support/fakes.h"
#include "support/loopbackserver.h"
#include "support/printers.h"
#include "support/recordingsurface.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>

namespace {

class WebRadioTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("VELTO_AUDIO", "null");
        factory = new MediaDeviceFactory;
        tone = new QByteArray(LoopbackServer::toneMp3());
    }
    static void TearDownTestSuite()
    {
        delete factory;
        delete tone;
    }

    TempHome home;
    RecordingSurface skin;
    FakeDialogs dialogs;
    WaveVolume wave;
    QtHttpFetch http;
    std::array<QString, 10> radioUrl;
    std::unique_ptr<WebRadio> radio;

    static inline MediaDeviceFactory *factory = nullptr;
    static inline QByteArray *tone = nullptr;
    MediaDeviceFactory *devices = factory;

    QString stationsFile() const { return home.file(QStringLiteral("webradio.txt")); }
    QByteArray stationsBytes() const { return readAll(stationsFile()); }
    void start()
    {
        radio = std::make_unique<WebRadio>(
            WebRadio::Options{radioUrl},
            WebRadio::Services{skin, dialogs, *devices, wave, http, stationsFile()});
        radio->started();
        radio->entered();
    }
    // The engine, a tone and a station on 127.0.0.1: what a test that plays needs.
    std::unique_ptr<LoopbackServer> station(LoopbackServer::Stream options = {})
    {
        if (!factory->hasEngine() || tone->isEmpty())
            return nullptr;
        options.mp3 = *tone;
        auto server = std::make_unique<LoopbackServer>(options);
        return server->listening() ? std::move(server) : nullptr;
    }
    QString label(int n) const { return skin.labels.value(n); }
    bool waitFor(const std::function<bool()> &done, int ms = 15000)
    {
        // The beat the clock gives the mode in the program.
        QTimer beat;
        QObject::connect(&beat, &QTimer::timeout, [this] { radio->WRUpdate(); });
        beat.start(250);
        return QTest::qWaitFor(done, ms);
    }
    SkinListArea *list() { return skin.list(WebRadio::kStationList); }
    SkinTextField *field() { return skin.textField(WebRadio::kAddressField); }
};

#define NEED_STATION(server)                                                                       \
    if (!(server))                                                                                 \
    GTEST_SKIP() << "needs the media engine, ffmpeg and a loopback port"

} // namespace

TEST_F(WebRadioTest, PlaysAStationShowsWhatItsStreamTellsAndKeepsTheAddresses)
{
    LoopbackServer::Stream o;
    o.titles = {"Caf\xE9 One"}; // in Latin-1
    auto server = station(o);
    NEED_STATION(server);
    start();
    radio->playAddress(server->url());
    EXPECT_EQ(label(WebRadio::kStatusLabel), QStringLiteral("Contacting..."));
    EXPECT_EQ(label(WebRadio::kStationLabel), QStringLiteral("Station"));

    ASSERT_TRUE(waitFor([&] {
        return label(WebRadio::kOnAirLabel) == QStringLiteral("Caf\u00e9 One");
    })) << label(WebRadio::kOnAirLabel).toStdString();
    EXPECT_TRUE(waitFor([&] { return radio->playState() == WebRadio::Playing; }));
    EXPECT_EQ(label(WebRadio::kBandwidthLabel), QStringLiteral("128 kbit/s"));
    EXPECT_EQ(label(WebRadio::kStationLabel), QStringLiteral("Loopback FM"))
        << "a quick station goes by the name its stream gives";
    EXPECT_EQ(field()->text(), server->url());
    EXPECT_TRUE(waitFor([&] { return skin.groups.value(WebRadio::kTimeGroup).toInt() >= 2; }))
        << "the listening time runs";
    EXPECT_EQ(skin.groups.value(WebRadio::kBufferGroup).toInt(), 100);
    EXPECT_EQ(radioUrl[0], server->url()) << "the last address played";

    radio->WRStop();
    EXPECT_EQ(radio->playState(), WebRadio::Stopped);

    // The quick stations: each address once, newest first.
    radio->playAddress(server->url(QStringLiteral("/other")));
    radio->playAddress(server->url());
    EXPECT_EQ(radioUrl[0], server->url());
    EXPECT_EQ(radioUrl[1], server->url(QStringLiteral("/other")));
    radio->DoIt(131);
    EXPECT_EQ(radio->current().location, server->url(QStringLiteral("/other")));
}

// The first station of a run waits for the engine to load on a worker thread;
// a Stop meanwhile is not undone when it arrives.
TEST_F(WebRadioTest, TheFirstStationWaitsForTheEngineAndAStopMeanwhileHolds)
{
    auto server = station();
    NEED_STATION(server);
    MediaDeviceFactory cold;
    devices = &cold;
    start();
    radio->playAddress(server->url());
    EXPECT_FALSE(cold.isLoaded()) << "the window went on while the engine loads";
    EXPECT_EQ(label(WebRadio::kStatusLabel), QStringLiteral("Contacting..."));
    radio->WRStop();
    ASSERT_TRUE(QTest::qWaitFor([&] { return cold.isLoaded(); }, 15000));
    EXPECT_EQ(radio->playState(), WebRadio::Stopped);
    EXPECT_EQ(label(WebRadio::kStatusLabel), QStringLiteral("Stopped"));
    EXPECT_TRUE(label(WebRadio::kStationLabel).isEmpty()) << "the stopped stream was not opened";

    radio->playAddress(server->url());
    EXPECT_TRUE(waitFor([&] { return radio->playState() == WebRadio::Playing; }))
        << label(WebRadio::kStatusLabel).toStdString();
    EXPECT_EQ(server->streamConnections(), 1);
    radio.reset();
}

TEST_F(WebRadioTest, AClosedConnectionIsToldAndPlayReconnects)
{
    LoopbackServer::Stream o;
    o.closeAfterBytes = 3 * 16000;
    o.burstBytes = 4000;
    auto server = station(o);
    NEED_STATION(server);
    start();
    radio->playAddress(server->url());
    ASSERT_TRUE(waitFor([&] {
        return label(WebRadio::kStatusLabel) == QLatin1String("Connection lost");
    })) << label(WebRadio::kStatusLabel).toStdString();
    EXPECT_EQ(radio->playState(), WebRadio::Stopped);
    radio->DoIt(147);
    EXPECT_TRUE(waitFor([&] { return server->streamConnections() == 2; }));
    EXPECT_TRUE(waitFor([&] { return radio->playState() == WebRadio::Playing; }));
}

TEST_F(WebRadioTest, AStationPlaylistPlaysItsFirstWorkingStreamAndAMissingOneCannotConnect)
{
    auto server = station();
    NEED_STATION(server);
    server->page("/listen.pls",
                 "[playlist]\nNumberOfEntries=2\nFile1=" +
                     server->url(QStringLiteral("/gone.mp3")).toUtf8() +
                     "\nFile2=" + server->url().toUtf8() + "\n",
                 "audio/x-scpls");
    server->page("/self.m3u", server->url(QStringLiteral("/self.m3u")).toUtf8() + "\n",
                 "audio/x-mpegurl");
    start();
    radio->playAddress(server->url(QStringLiteral("/listen.pls")));
    ASSERT_TRUE(waitFor([&] { return radio->playState() == WebRadio::Playing; }))
        << label(WebRadio::kStatusLabel).toStdString();
    const std::vector<std::string> sent = server->requests();
    ASSERT_GE(sent.size(), 3u);
    EXPECT_EQ(std::vector(sent.begin(), sent.begin() + 3),
              (std::vector<std::string>{"/listen.pls", "/gone.mp3", "/stream"}));
    EXPECT_EQ(radioUrl[0], server->url(QStringLiteral("/listen.pls")));

    radio->playAddress(server->url(QStringLiteral("/self.m3u")));
    ASSERT_TRUE(
        waitFor([&] { return label(WebRadio::kStatusLabel) == QLatin1String("Cannot connect"); }));
    EXPECT_EQ(server->asked("/self.m3u"), 1) << "a playlist that names itself is read once";

    radio->playAddress(server->url(QStringLiteral("/missing.mp3")));
    ASSERT_TRUE(waitFor([&] {
        return label(WebRadio::kStatusLabel) == QLatin1String("Cannot connect");
    })) << label(WebRadio::kStatusLabel).toStdString();
    EXPECT_TRUE(waitFor([&] {
        return label(WebRadio::kOnAirLabel) == QLatin1String("HTTP error 404 Not Found");
    })) << "the server's answer, not just the engine's failure: "
        << label(WebRadio::kOnAirLabel).toStdString();
    EXPECT_EQ(radio->playState(), WebRadio::Stopped);
}

TEST_F(WebRadioTest, StationListRules)
{
    home.write(QStringLiteral("webradio.txt"),
               "Jazz @ http://jazz.invalid/stream\n\nno at sign\n @ http://anon.invalid/x\n");
    start();
    ASSERT_EQ(radio->stations().size(), 3);
    EXPECT_EQ(list()->count(), 3);

    radio->DoIt(143);
    EXPECT_EQ(dialogs.messages, QStringList({QStringLiteral("No station selected!")}));
    EXPECT_EQ(radio->stations().size(), 3) << "nothing selected, nothing deleted";

    list()->setCurrentRow(1); // a click
    EXPECT_EQ(radio->presetIndex(), 1);
    radio->DoIt(143);
    EXPECT_EQ(radio->stations().size(), 2);
    EXPECT_EQ(stationsBytes(), QByteArray("Jazz @http://jazz.invalid/stream\n"
                                          "Unnamed Station @http://anon.invalid/x\n"));

    radio->DoIt(142); // add
    EXPECT_EQ(field()->text(), QStringLiteral("Station @ http://"));
    field()->setText(QStringLiteral("Blues @ blues.invalid:8000/live"));
    QTest::keyClick(field(), Qt::Key_Return);
    ASSERT_EQ(radio->stations().size(), 3);
    EXPECT_EQ(radio->stations()[2].location, QStringLiteral("blues.invalid:8000/live"));
    EXPECT_EQ(radio->presetIndex(), 2);

    list()->setCurrentRow(0);
    radio->DoIt(146); // edit
    EXPECT_EQ(field()->text(), QStringLiteral("Jazz @http://jazz.invalid/stream"));
    field()->setText(QStringLiteral("Smooth @ http://jazz.invalid/2"));
    QTest::keyClick(field(), Qt::Key_Return);
    EXPECT_EQ(radio->stations()[0].name, QStringLiteral("Smooth"));

    radio->DoIt(145);
    EXPECT_EQ(radio->presetIndex(), 0) << "the top stays the top";
    radio->DoIt(144);
    radio->DoIt(144);
    radio->DoIt(144);
    EXPECT_EQ(radio->presetIndex(), 2);
    EXPECT_EQ(label(WebRadio::kStationLabel), QStringLiteral("Blues"));
    EXPECT_EQ(stationsBytes().count('\n'), 3);
}
