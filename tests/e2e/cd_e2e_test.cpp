#include "e2e.h"

#include "support/discimage.h"
#include "support/loopbackserver.h"

#include <future>
#include <memory>
#include <mutex>

namespace {

// Keeps the server's answer back until the test lets it go (or long after
// any test would have given up, so a failed test never hangs its server).
class Gate
{
public:
    void open()
    {
        std::call_once(m_once, [this] { m_opened.set_value(); });
    }
    void pass() { m_passing.wait_for(std::chrono::seconds(60)); }

private:
    std::once_flag m_once;
    std::promise<void> m_opened;
    std::shared_future<void> m_passing = m_opened.get_future().share();
};

} // namespace

using CdE2e = E2e;

// A disc image named on the command line, its tracks named by a CDDB server
// (our own, on this machine), track 2 played with a key press, the time
// running and the status word following.
TEST_F(CdE2e, AnImageIsNamedFromCddbAndItsSecondTrackPlays)
{
    QTemporaryDir discs;
    DiscImage disc;
    disc.sectors = {150, 900, 150};
    const QString cue = disc.write(discs.path(), QStringLiteral("disc"));
    ASSERT_FALSE(cue.isEmpty());
    const std::string id = disc.cddbId().toStdString();
    Gate entry;
    LoopbackServer server([&](const std::string &target) {
        if (target.find("cddb+read") == std::string::npos)
            return LoopbackServer::Response{200, "200 misc " + id + " Trio / Lights\r\n"};
        entry.pass();
        return LoopbackServer::Response{200, "210 misc " + id +
                                                 " follows\r\nDTITLE=Trio / Lights\r\n"
                                                 "TTITLE0=First Light\r\nTTITLE1=Second Light\r\n"
                                                 "TTITLE2=Last Light\r\n.\r\n"};
    });
    const std::shared_ptr<void> openAtEnd(nullptr, [&](void *) { entry.open(); });

    VeltoProcess velto;
    velto.setEnvironment(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
    velto.writeSettings({{"cddbcmd", server.url("/~cddb/cddb.cgi/?cmd=")},
                         {"usecddb", "1"},
                         {"emailid", "tester@example.org"},
                         {"cddrive", velto.home(QStringLiteral("no-drive"))}});
    const QString window = velto.startWindow({cue});
    ASSERT_FALSE(window.isEmpty());
    const auto title = [&window] { return xdotool({"getwindowname", window}); };

    // What is asked is CddbClient's test.
    ASSERT_TRUE(waitUntil([&] { return server.requests().size() == 2; }))
        << "the disc is looked up and its entry asked for";

    const ShippedSkin player = shippedSkin(QStringLiteral("default.skin"));
    const QRect status = player.rect(QStringLiteral("L15"));
    const QRect time = player.digits(QStringLiteral("D0"), 7);
    const QRect list = player.rect(QStringLiteral("X1"));
    ASSERT_FALSE(status.isEmpty() || time.isEmpty() || list.isEmpty());
    // The list shows "Track  1" and so on until the entry comes; its names
    // and the status line's news are drawn together.
    const QImage numbered = grabScreen(window, list);
    entry.open();
    ASSERT_TRUE(waitUntil([&] { return grabScreen(window, list) != numbered; }))
        << "the tracks take the names read";
    const QImage loaded = grabScreen(window, status);

    // The list takes the focus, and X plays the next track: track 2.
    focusPlaylist(window);
    key(QStringLiteral("x"));
    ASSERT_TRUE(waitUntil([&] {
        return title().startsWith(QLatin1String("02 - Second Light  (00:12)"));
    })) << "the title is "
        << title().toStdString();
    const QImage early = grabScreen(window, time);
    EXPECT_TRUE(waitUntil([&] { return grabScreen(window, time) != early; })) << "the time runs";
    EXPECT_TRUE(waitUntil([&] { return grabScreen(window, status) != loaded; }))
        << "the status word says it plays";
    key(QStringLiteral("ctrl+q"));
    EXPECT_TRUE(velto.waitForExit());
}
