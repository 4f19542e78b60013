#include "e2e.h"

#include "support/loopbackserver.h"

namespace {

class WebRadioE2e : public E2e
{
protected:
    void SetUp() override
    {
        E2e::SetUp();
        if (IsSkipped())
            return;
        tone = LoopbackServer::toneMp3();
        if (tone.isEmpty())
            GTEST_SKIP() << "no ffmpeg to make the stream";
        velto.setEnvironment(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
    }
    void TearDown() override
    {
        velto.signal(SIGTERM);
        velto.waitForExit();
    }

    QString title() const { return xdotool({QStringLiteral("getwindowname"), window}); }
    QImage area(const QString &code) const { return grabScreen(window, radio.rect(code)); }

    const ShippedSkin radio = shippedSkin(QStringLiteral("webradio.skin"));
    QByteArray tone;
    VeltoProcess velto;
    QString window;
};

} // namespace

// The user switches to the web radio with its key, double-clicks the station,
// and sees the stream's title change, and the status leave "Playing..." while
// the station stalls and come back to it.
TEST_F(WebRadioE2e, APickedStationPlaysItsTitlesAndRidesOutAStall)
{
    LoopbackServer server(LoopbackServer::Stream{.mp3 = tone,
                                                 .burstBytes = 8000,
                                                 .titles = {"Morning Song", "Evening Song"},
                                                 .titleSeconds = 6,
                                                 .stallAfterSeconds = 15,
                                                 .stallSeconds = 4});
    ASSERT_TRUE(server.listening());
    // The station list the user keeps: only the loopback station, never the shipped one.
    QDir().mkpath(velto.home(QStringLiteral("data/velto")));
    QFile list(velto.home(QStringLiteral("data/velto/webradio.txt")));
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write("Loopback Station @ " + server.url().toUtf8() + "\n");
    list.close();

    window = velto.startWindow();
    ASSERT_FALSE(window.isEmpty());
    const QSize player = shippedSkin(QStringLiteral("default.skin")).size;
    ASSERT_TRUE(waitUntil([&] { return windowGeometry(window).size() == player; }));
    focusPlaylist(window);
    key(QStringLiteral("w"));
    ASSERT_TRUE(waitUntil([&] { return windowGeometry(window).size() == radio.size; }))
        << "W shows the web radio";
    doubleClick(windowGeometry(window).topLeft() + radio.rect(QStringLiteral("X8")).topLeft() +
                QPoint(30, 8));
    ASSERT_TRUE(waitUntil([&] { return title().contains(QLatin1String("Morning Song")); }, 30000))
        << "the title is " << title().toStdString();

    const QImage morning = area(QStringLiteral("L18"));
    ASSERT_TRUE(waitUntil([&] { return title().contains(QLatin1String("Evening Song")); }, 30000));
    EXPECT_TRUE(waitUntil([&] { return area(QStringLiteral("L18")) != morning; }))
        << "the new title shows on the skin";

    const QImage playing = area(QStringLiteral("L15"));
    ASSERT_TRUE(waitUntil([&] { return area(QStringLiteral("L15")) != playing; }, 30000))
        << "the stall changes the status";
    EXPECT_TRUE(waitUntil([&] { return area(QStringLiteral("L15")) == playing; }, 30000))
        << "and the status comes back to what it was while playing";
    EXPECT_EQ(server.streamConnections(), 1);
}
