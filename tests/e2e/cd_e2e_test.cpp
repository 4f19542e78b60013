#include "e2e.h"

#include "support/discimage.h"
#include "support/loopbackserver.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

namespace {

// The fields of the shipped player skin's record with this code.
QList<int> skinRecord(const QString &code)
{
    QFile file(QStringLiteral(VELTO_DATA_DIR "/skins/default.skin"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> f = line.trimmed().split(',');
        if (f.size() > 6 && f[0] == code.toLatin1()) {
            QList<int> numbers;
            for (qsizetype i = 1; i < 7; ++i)
                numbers.append(f[i].toInt());
            return numbers;
        }
    }
    return {};
}

// A label's or a list's rectangle: x, y, width, height.
QRect boxOf(const QString &code)
{
    const QList<int> f = skinRecord(code);
    return f.isEmpty() ? QRect() : QRect(f[0], f[1], f[2], f[3]);
}

// A digit group's cells: x, y, then the glyph's width and height.
QRect digitsOf(const QString &code, int cells)
{
    const QList<int> f = skinRecord(code);
    return f.isEmpty() ? QRect() : QRect(f[0], f[1], f[4] * cells, f[5]);
}

// The skin's rectangle as the screen shows it now.
QImage shot(const QString &window, const QRect &rect)
{
    return grabScreen().copy(rect.translated(windowGeometry(window).topLeft()));
}

// Keeps the server's answer back until the test lets it go (or long after
// any test would have given up, so a failed test never hangs its server).
class Gate
{
public:
    void open()
    {
        std::lock_guard lock(m_mutex);
        m_open = true;
        m_changed.notify_all();
    }
    void pass()
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, std::chrono::seconds(60), [this] { return m_open; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_open = false;
};

} // namespace

// The user story: a disc image named on the command line, its
// tracks named by a CDDB server (our own, on this machine), track 2 played
// with a key press, the time running and the status word following.
TEST(CdE2e, AnImageIsNamedFromCddbAndItsSecondTrackPlays)
{
    if (!haveDisplay())
        GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
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
    struct OpenAtEnd
    {
        Gate &gate;
        ~OpenAtEnd() { gate.open(); }
    } openAtEnd{entry};

    VeltoProcess velto;
    velto.setEnvironment(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
    {
        QSettings ini(velto.home(QStringLiteral("config/velto/velto.ini")), QSettings::IniFormat);
        ini.setValue("config/cddbcmd", server.url("/~cddb/cddb.cgi/?cmd="));
        ini.setValue("config/usecddb", "1");
        ini.setValue("config/emailid", "tester@example.org");
        ini.setValue("config/cddrive", velto.home(QStringLiteral("no-drive")));
    }
    ASSERT_TRUE(velto.start({cue}));
    const QString window = velto.waitForWindow();
    ASSERT_FALSE(window.isEmpty());
    const auto title = [&window] { return xdotool({"getwindowname", window}); };

    ASSERT_TRUE(waitUntil([&] { return server.requests().size() == 2; }))
        << "the disc is looked up and its entry asked for";
    EXPECT_NE(server.requests()[0].find("cddb+query+" + id + "+3+150+300+1200+16"),
              std::string::npos)
        << server.requests()[0];

    const QRect status = boxOf(QStringLiteral("L15"));
    const QRect time = digitsOf(QStringLiteral("D0"), 7);
    const QRect list = boxOf(QStringLiteral("X1"));
    ASSERT_FALSE(status.isEmpty() || time.isEmpty() || list.isEmpty());
    // The list shows "Track  1" and so on until the entry comes; its names
    // and the status line's news are drawn together.
    const QImage numbered = shot(window, list);
    entry.open();
    ASSERT_TRUE(waitUntil([&] { return shot(window, list) != numbered; }))
        << "the tracks take the names read";
    const QImage loaded = shot(window, status);

    // The list takes the focus, and X plays the next track: track 2.
    const QPoint at = windowGeometry(window).topLeft() + list.topLeft() + QPoint(20, 8);
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "1"});
    xdotool({"key", "x"});
    ASSERT_TRUE(waitUntil([&] {
        return title().startsWith(QLatin1String("02 - Second Light  (00:12)"));
    })) << "the title is "
        << title().toStdString();
    const QImage early = shot(window, time);
    EXPECT_TRUE(waitUntil([&] { return shot(window, time) != early; })) << "the time runs";
    EXPECT_TRUE(waitUntil([&] { return shot(window, status) != loaded; }))
        << "the status word says it plays";
    const QImage playing = shot(window, status);

    xdotool({"key", "s"});
    EXPECT_TRUE(waitUntil([&] { return shot(window, status) != playing; }))
        << "and that it stopped";

    xdotool({"key", "ctrl+q"});
    EXPECT_TRUE(velto.waitForExit());
}
