#include "e2e.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <gtest/gtest.h>

namespace {

struct ShippedPlayer
{
    QImage main;
    QRgb transparent = 0;
    QPoint hole{-1, -1};  // a pixel cut out of the window
    QPoint solid{-1, -1}; // a pixel the skin shows
    QRect close;          // the button bound to command 1
};

// Reads the default skin's main picture, transparent colour and close button from the
// source tree.
ShippedPlayer shippedPlayer()
{
    ShippedPlayer p;
    const QString folder = QStringLiteral(VELTO_DATA_DIR "/skins/");
    QFile file(folder + QStringLiteral("default.skin"));
    if (!file.open(QIODevice::ReadOnly))
        return p;
    const QString text = QString::fromUtf8(file.readAll());
    const auto main =
        QRegularExpression(QStringLiteral("\"Main\"\\s*,\\s*\"([^\"]+)\"")).match(text);
    const auto colour =
        QRegularExpression(QStringLiteral("(?m)^O\\s*,\\s*(\\d+)\\s*,\\s*(\\d+)\\s*,\\s*(\\d+)"))
            .match(text);
    const auto close =
        QRegularExpression(
            QStringLiteral("(?m)^B1\\s*,\\s*(\\d+)\\s*,\\s*(\\d+)\\s*,\\s*(\\d+)\\s*,\\s*(\\d+)"))
            .match(text);
    if (!main.hasMatch() || !colour.hasMatch())
        return p;
    if (close.hasMatch())
        p.close = QRect(close.captured(1).toInt(), close.captured(2).toInt(),
                        close.captured(3).toInt(), close.captured(4).toInt());
    p.main = QImage(folder + main.captured(1)).convertToFormat(QImage::Format_RGB32);
    p.transparent =
        qRgb(colour.captured(1).toInt(), colour.captured(2).toInt(), colour.captured(3).toInt());
    // A pixel whose whole 3x3 neighbourhood is of one kind, so a one-pixel
    // difference in placement cannot blur the check.
    auto uniform = [&](int x, int y, bool cut) {
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                if ((p.main.pixel(x + dx, y + dy) == p.transparent) != cut)
                    return false;
        return true;
    };
    for (int y = 1; y + 1 < p.main.height(); ++y) {
        for (int x = 1; x + 1 < p.main.width(); ++x) {
            if (p.hole.x() < 0 && uniform(x, y, true))
                p.hole = {x, y};
            if (p.solid.x() < 0 && x > p.main.width() / 3 && y > p.main.height() / 3 &&
                uniform(x, y, false))
                p.solid = {x, y};
        }
    }
    return p;
}

TEST(ShapedWindow, HolesLetClicksThroughAndTheCloseButtonEndsVelto)
{
    if (!haveDisplay())
        GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
    const ShippedPlayer player = shippedPlayer();
    ASSERT_FALSE(player.main.isNull()) << "the shipped player skin is missing";
    ASSERT_GE(player.hole.x(), 0) << "the player skin has no transparent area";
    ASSERT_GE(player.solid.x(), 0);
    ASSERT_FALSE(player.close.isEmpty()) << "the player skin has no close button";

    const QColor beneath(0x13, 0x57, 0x9b);
    Backdrop backdrop(beneath);
    VeltoProcess velto;
    ASSERT_TRUE(velto.start());
    const QString window = velto.waitForWindow();
    ASSERT_FALSE(window.isEmpty());
    processEvents(500);
    const QRect frame = windowGeometry(window);
    ASSERT_EQ(frame.size(), player.main.size());

    const QImage screen = grabScreen();
    const QPoint hole = frame.topLeft() + player.hole;
    const QPoint solid = frame.topLeft() + player.solid;
    EXPECT_EQ(QColor(screen.pixel(hole)), beneath);
    EXPECT_EQ(QColor(screen.pixel(solid)), QColor(player.main.pixel(player.solid)));

    const int before = backdrop.clicks();
    xdotool({"mousemove", QString::number(hole.x()), QString::number(hole.y()), "click", "1"});
    processEvents(300);
    EXPECT_EQ(backdrop.clicks(), before + 1) << "a click in the hole reaches the window beneath";
    xdotool({"mousemove", QString::number(solid.x()), QString::number(solid.y()), "click", "1"});
    processEvents(300);
    EXPECT_EQ(backdrop.clicks(), before + 1) << "a click on the skin stays with Velto";

    const QPoint close = frame.topLeft() + player.close.center();
    xdotool({"mousemove", QString::number(close.x()), QString::number(close.y()), "click", "1"});
    ASSERT_TRUE(velto.waitForExit()) << "the close button did not end Velto";
    EXPECT_TRUE(QFile::exists(velto.home(QStringLiteral("config/velto/velto.ini"))));
}

// A point of the player skin that is neither cut away nor under any element.
QPoint bareSkinPoint(const ShippedPlayer &player)
{
    QFile file(QStringLiteral(VELTO_DATA_DIR "/skins/default.skin"));
    if (!file.open(QIODevice::ReadOnly))
        return {-1, -1};
    QList<QRect> taken;
    const QRegularExpression record(QStringLiteral(
        "(?m)^([BKCILTXSD])\\d+\\s*,\\s*(-?\\d+)\\s*,\\s*(-?\\d+)\\s*,\\s*(-?\\d+)\\s*,\\s*(-?\\d+)"
        "\\s*,\\s*(-?\\d+)\\s*,\\s*(-?\\d+)"));
    auto it = record.globalMatch(QString::fromUtf8(file.readAll()));
    while (it.hasNext()) {
        const auto m = it.next();
        const int x = m.captured(2).toInt(), y = m.captured(3).toInt();
        // Digit groups give glyph sizes, not their width: take a generous strip.
        taken << (m.captured(1) == QLatin1String("D")
                      ? QRect(x, y, m.captured(6).toInt() * 10, m.captured(7).toInt())
                      : QRect(x, y, m.captured(4).toInt(), m.captured(5).toInt()));
    }
    for (int y = 8; y < player.main.height() - 8; y += 2) {
        for (int x = 8; x < player.main.width() - 8; x += 2) {
            const QRect around(x - 6, y - 6, 13, 13);
            bool free = true;
            for (const QRect &r : taken)
                free = free && !r.intersects(around);
            for (int dy = -6; free && dy <= 6; dy += 3)
                for (int dx = -6; free && dx <= 6; dx += 3)
                    free = player.main.pixel(x + dx, y + dy) != player.transparent;
            if (free)
                return {x, y};
        }
    }
    return {-1, -1};
}

// Drags the window by its bare spot in five steps; returns where it settled.
QPoint drag(const QString &window, QPoint grip, QPoint by)
{
    const QPoint from = windowGeometry(window).topLeft() + grip;
    xdotool({"mousemove", QString::number(from.x()), QString::number(from.y()), "mousedown", "1"});
    for (int step = 1; step <= 5; ++step) {
        const QPoint at = from + by * step / 5;
        xdotool({"mousemove", QString::number(at.x()), QString::number(at.y())});
        processEvents(40);
    }
    xdotool({"mouseup", "1"});
    processEvents(300);
    return windowGeometry(window).topLeft();
}

} // namespace

TEST(ShapedWindow, DraggingTheSkinSnapsItAndItsMenuQuitsKeepingThePlace)
{
    if (!haveDisplay())
        GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
    const QPoint grip = bareSkinPoint(shippedPlayer());
    ASSERT_GE(grip.x(), 0) << "the player skin has no bare spot to drag by";

    VeltoProcess velto;
    QDir().mkpath(velto.home(QStringLiteral("config/velto")));
    QFile ini(velto.home(QStringLiteral("config/velto/velto.ini")));
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly));
    ini.write("[config]\nwinsnap=1\nwinsavepos=1\nx=300\ny=200\n");
    ini.close();
    ASSERT_TRUE(velto.start());
    const QString window = velto.waitForWindow();
    ASSERT_FALSE(window.isEmpty());
    processEvents(300);
    ASSERT_EQ(windowGeometry(window).topLeft(), QPoint(300, 200));
    EXPECT_EQ(drag(window, grip, {150, 100}), QPoint(450, 300));
    // 10 pixels from the left edge is inside the snapping distance.
    EXPECT_EQ(drag(window, grip, {-440, 0}), QPoint(0, 300));

    auto windows = [&velto] {
        return xdotool({"search", "--onlyvisible", "--pid", QString::number(velto.pid())})
            .split('\n', Qt::SkipEmptyParts)
            .size();
    };
    const int before = windows();
    const QPoint at = windowGeometry(window).topLeft() + grip;
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "3"});
    processEvents(500);
    EXPECT_EQ(windows(), before + 1) << "the menu opened as a window of its own";
    // The menu has the keyboard: "q" is its "&Quit".
    xdotool({"key", "q"});
    ASSERT_TRUE(velto.waitForExit()) << "Quit from the menu ended Velto";
    const QSettings saved(ini.fileName(), QSettings::IniFormat);
    EXPECT_EQ(saved.value("config/x").toString() + ',' + saved.value("config/y").toString(),
              QStringLiteral("0,300"))
        << "the place the window was dragged to is kept";
}
