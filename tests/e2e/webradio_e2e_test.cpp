#include "e2e.h"

#include "support/loopbackserver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <gtest/gtest.h>

#include <csignal>

namespace {

// A record of a shipped skin by its code ("X8", "L15"): its rectangle.
QRect skinRect(const QString &skin, const QString &code)
{
    QFile file(QStringLiteral(VELTO_DATA_DIR "/skins/") + skin);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> f = line.split(',');
        if (f.size() >= 5 && f[0] == code.toLatin1())
            return QRect(f[1].toInt(), f[2].toInt(), f[3].toInt(), f[4].toInt());
    }
    return {};
}

QSize skinSize(const QString &skin)
{
    QFile file(QStringLiteral(VELTO_DATA_DIR "/skins/") + skin);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> f = line.split(',');
        if (f.size() >= 3 && f[0] == "W")
            return QSize(f[1].toInt(), f[2].toInt());
    }
    return {};
}

class WebRadioE2e : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!haveDisplay())
            GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
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
    QImage area(const QString &code) const
    {
        const QRect r = skinRect(QStringLiteral("webradio.skin"), code)
                            .translated(windowGeometry(window).topLeft());
        return grabScreen().copy(r);
    }

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
    LoopbackServer::Stream o;
    o.mp3 = tone;
    o.titles = {"Morning Song", "Evening Song"};
    o.titleSeconds = 6;
    o.burstBytes = 8000;
    o.stallAfterSeconds = 15;
    o.stallSeconds = 4;
    LoopbackServer server(o);
    ASSERT_TRUE(server.listening());
    // The station list the user keeps: only the loopback station, never the shipped one.
    QDir().mkpath(velto.home(QStringLiteral("data/velto")));
    QFile list(velto.home(QStringLiteral("data/velto/webradio.txt")));
    ASSERT_TRUE(list.open(QIODevice::WriteOnly));
    list.write("Loopback Station @ " + server.url().toUtf8() + "\n");
    list.close();

    ASSERT_TRUE(velto.start());
    window = velto.waitForWindow();
    ASSERT_FALSE(window.isEmpty());
    ASSERT_TRUE(
        waitUntil([&] { return windowGeometry(window).size() == skinSize("default.skin"); }));
    // A click on the playlist gives the window the keys.
    const QPoint playlist =
        windowGeometry(window).topLeft() +
        skinRect(QStringLiteral("default.skin"), QStringLiteral("X1")).topLeft() + QPoint(20, 8);
    xdotool({"mousemove", QString::number(playlist.x()), QString::number(playlist.y())});
    xdotool({"click", "1"});
    xdotool({"key", "w"});
    ASSERT_TRUE(waitUntil([&] {
        return windowGeometry(window).size() == skinSize("webradio.skin");
    })) << "W shows the web radio";

    const QPoint row = windowGeometry(window).topLeft() +
                       skinRect(QStringLiteral("webradio.skin"), QStringLiteral("X8")).topLeft() +
                       QPoint(30, 8);
    xdotool({"mousemove", QString::number(row.x()), QString::number(row.y())});
    xdotool({"click", "--repeat", "2", "--delay", "80", "1"});
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

TEST_F(WebRadioE2e, AnAddressHandedOverOnTheCommandLinePlaysInTheWebRadio)
{
    LoopbackServer::Stream o;
    o.mp3 = tone;
    o.titles = {"Handed Over"};
    LoopbackServer server(o);
    ASSERT_TRUE(server.listening());
    ASSERT_TRUE(velto.start({QStringLiteral("--play"), server.url()}));
    window = velto.waitForWindow();
    ASSERT_FALSE(window.isEmpty());
    EXPECT_TRUE(
        waitUntil([&] { return windowGeometry(window).size() == skinSize("webradio.skin"); }));
    EXPECT_TRUE(waitUntil([&] { return title().contains(QLatin1String("Handed Over")); }, 30000))
        << "the title is " << title().toStdString();
}
