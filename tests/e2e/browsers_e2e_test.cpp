#include "e2e.h"

#include "support/loopbackserver.h"

// The skin browser, the visual playlist selector and the web browser mode,
// driven with real mouse and keys on the real program.

namespace {

const QString kSkins = QStringLiteral(VELTO_DATA_DIR "/skins/");

bool copySkin(const QString &name, const QString &to)
{
    QDir().mkpath(to);
    const ShippedSkin skin = shippedSkin(name);
    bool ok = QFile::copy(kSkins + name, to + '/' + name);
    for (const char *which : {"Main", "Resource"}) {
        const QString picture = skin.records.value(QLatin1String(which)).value(1);
        ok = QFile::copy(kSkins + picture, to + '/' + picture) && ok;
    }
    return ok;
}

// The visible window of velto's whose title is name.
QString windowNamed(const VeltoProcess &velto, const QString &name)
{
    QString found;
    waitUntil([&] {
        const QStringList ids =
            xdotool({"search", "--all", "--onlyvisible", "--pid", QString::number(velto.pid()),
                     "--name", QStringLiteral("^%1( — Velto)?$").arg(name)},
                    2000)
                .split('\n', Qt::SkipEmptyParts);
        found = ids.value(0);
        return !found.isEmpty();
    });
    return found;
}

bool near(QColor a, QColor b, int tolerance = 24)
{
    return std::abs(a.red() - b.red()) <= tolerance &&
           std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

// Opens the popup menu over the main window's playlist and picks entries by their keys.
void menu(const QString &window, const QStringList &keys)
{
    focusPlaylist(window);
    key(QStringLiteral("m"));
    for (const QString &k : keys)
        key(k);
}

using Browsers = E2e;

} // namespace

TEST_F(Browsers, AClickInTheSkinBrowserLoadsTheSkin)
{
    VeltoProcess velto;
    const QString mine = velto.home(QStringLiteral("myskins"));
    ASSERT_TRUE(copySkin(QStringLiteral("default.skin"), mine));
    ASSERT_TRUE(copySkin(QStringLiteral("calculator.skin"), mine));
    velto.writeSettings({{"skin", "default.skin"}, {"skinpath", mine}});
    const QString window = velto.startWindow();
    ASSERT_FALSE(window.isEmpty());
    const QSize player = windowGeometry(window).size();

    menu(window, {QStringLiteral("k")}); // Select S&kin...
    const QString browser = windowNamed(velto, QStringLiteral("Skin Browser"));
    ASSERT_FALSE(browser.isEmpty()) << "command 6 opens the skin browser";
    // The list sits at the window's top left; CALCULATOR comes before DEFAULT.
    ASSERT_TRUE(waitUntil([&] { return !windowGeometry(browser).isEmpty(); }));
    click(windowGeometry(browser).topLeft() + QPoint(40, 20));
    EXPECT_TRUE(waitUntil([&] { return windowGeometry(window).size() != player; }))
        << "the calculator skin is shown";
}

TEST_F(Browsers, TheSelectorPagesAndLoadsAPlaylist)
{
    VeltoProcess velto;
    const QString lists = velto.home(QStringLiteral("lists"));
    QDir().mkpath(lists);
    for (int i = 1; i <= 17; ++i) {
        QFile list(QStringLiteral("%1/list%2.m3u").arg(lists).arg(i, 2, 10, QLatin1Char('0')));
        ASSERT_TRUE(list.open(QIODevice::WriteOnly));
        list.write(QStringLiteral("song-of-list-%1.mp3\n").arg(i).toUtf8());
    }
    // The seventeenth list has a picture of its own: green.
    QImage green(40, 40, QImage::Format_RGB32);
    green.fill(QColor(0, 200, 0));
    ASSERT_TRUE(green.save(lists + "/list17.bmp"));
    velto.writeSettings({{"visplpath", lists}});
    const QString window = velto.startWindow();
    ASSERT_FALSE(window.isEmpty());

    // A key shared by two entries only moves between them: the second "p" is
    // &Player, the second "v" its &Visual Playlist Selector (after Pre&vious).
    menu(window, {QStringLiteral("p"), QStringLiteral("p"), QStringLiteral("Right"),
                  QStringLiteral("v"), QStringLiteral("v"), QStringLiteral("Return")});
    const QString selector = windowNamed(velto, QStringLiteral("Visual Playlist Selector"));
    ASSERT_FALSE(selector.isEmpty()) << "command 35 opens the selector";
    // The boxes: 96 pixels square, 6 apart, 8 from the window's corner.
    const auto box = [&](int i) {
        return windowGeometry(selector).topLeft() +
               QPoint(8 + (i % 4) * 102 + 48, 8 + (i / 4) * 102 + 48);
    };
    ASSERT_TRUE(waitUntil([&] { return !windowGeometry(selector).isEmpty(); }));
    // Beside the main window, whose playlist must stay in sight.
    const int right = windowGeometry(window).right() + 40;
    xdotool({"windowmove", selector, QString::number(right), "0"});
    ASSERT_TRUE(waitUntil([&] { return windowGeometry(selector).left() >= right; }));
    const QColor grid = screenPixel(windowGeometry(selector).topLeft() + QPoint(4, 4));
    ASSERT_TRUE(waitUntil([&] { return screenPixel(box(15)) != grid; }))
        << "page 1 has 16 pictures";

    click(box(5));                // the selector has the keys now
    key(QStringLiteral("alt+d")); // Pg &Dn
    EXPECT_TRUE(waitUntil([&] { return near(screenPixel(box(0)), QColor(0, 200, 0)); }))
        << "page 2 shows the seventeenth list's picture";

    // The list's entry reaches the main playlist on the skin.
    const QRect list = shippedSkin(QStringLiteral("default.skin"))
                           .rect(QStringLiteral("X1"))
                           .translated(windowGeometry(window).topLeft());
    const QImage before = grabScreen().copy(list);
    doubleClick(box(0));
    EXPECT_TRUE(waitUntil([&] { return grabScreen().copy(list) != before; }))
        << "the playlist on the skin shows the entry";
    focusPlaylist(window);
    key(QStringLiteral("ctrl+q"));
    ASSERT_TRUE(velto.waitForExit());
    QFile playlist(velto.home(QStringLiteral("data/velto/playlist.m3u")));
    ASSERT_TRUE(playlist.open(QIODevice::ReadOnly));
    EXPECT_TRUE(playlist.readAll().contains("song-of-list-17.mp3"));
}

TEST_F(Browsers, TheBrowserModeShowsALoopbackPage)
{
#ifndef VELTO_HAS_WEBENGINE
    GTEST_SKIP() << "built without Qt WebEngine";
#endif
    VeltoProcess velto;
    velto.writeSettings({{"skin", "browser.skin"}, {"skinpath", VELTO_DATA_DIR "/skins"}});
    const QString window = velto.startWindow({}, 60000);
    ASSERT_FALSE(window.isEmpty());
    const ShippedSkin skin = shippedSkin(QStringLiteral("browser.skin"));
    const QRect field = skin.rect(QStringLiteral("T1"));
    const QRect page = skin.rect(QStringLiteral("C3"));
    ASSERT_FALSE(field.isEmpty() || page.isEmpty());
    ASSERT_TRUE(waitUntil([&] { return windowGeometry(window).width() == 640; }));
    const QPoint origin = windowGeometry(window).topLeft();
    // Made once waitUntil has given the test its application: the server
    // answers on its event loop.
    LoopbackServer server;
    ASSERT_TRUE(server.listening());
    server.page("/page", "<html><head><title>Loopback</title></head>"
                         "<body style=\"background: #13579b\">&nbsp;</body></html>");

    click(origin + field.center());
    xdotool({"type", "--delay", "5", server.url("/page")});
    key(QStringLiteral("Return"));
    EXPECT_TRUE(waitUntil([&] { return server.asked("/page") > 0; }, 60000))
        << "the page was asked for";
    EXPECT_TRUE(waitUntil(
        [&] { return near(screenPixel(origin + page.center()), QColor(0x13, 0x57, 0x9b), 8); },
        60000))
        << "the page shows in the skin's web area";

    key(QStringLiteral("ctrl+q"));
    ASSERT_TRUE(velto.waitForExit(60000));
    QFile list(velto.home(QStringLiteral("data/velto/url-list.txt")));
    ASSERT_TRUE(list.open(QIODevice::ReadOnly));
    EXPECT_EQ(list.readAll(), (server.url("/page") + "\n").toUtf8());
}
