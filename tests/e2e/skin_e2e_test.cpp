#include "e2e.h"

#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QRegularExpression>
#include <QScreen>

#include <algorithm>

namespace {

// A plain window of one colour covering the screen, beneath everything started
// after it; it counts the clicks that reach it.
class Backdrop : public QRasterWindow
{
public:
    // The application comes before the window.
    explicit Backdrop(QColor colour) : QRasterWindow((guiApp(), nullptr)), m_colour(colour)
    {
        setFlags(Qt::FramelessWindowHint);
        setGeometry(QGuiApplication::primaryScreen()->geometry());
        show();
        const QPoint centre = geometry().center();
        if (!waitUntil([&] { return isExposed() && screenPixel(centre) == colour; }))
            ADD_FAILURE() << "the backdrop never showed";
    }
    int clicks = 0;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(QRect(QPoint(), size()), m_colour);
    }
    void mousePressEvent(QMouseEvent *) override { ++clicks; }

private:
    QColor m_colour;
};

struct ShippedPlayer
{
    QImage main;
    QRgb transparent = 0;
    QPoint hole{-1, -1}; // a pixel cut out of the window
    QPoint bare{-1, -1}; // a pixel the skin shows, under no element
    QRect close;         // the button bound to command 1
    QList<QRect> taken;  // where elements may draw over the picture
};

// The default skin's main picture, transparent colour and element places.
ShippedPlayer shippedPlayer()
{
    ShippedPlayer p;
    const ShippedSkin skin = shippedSkin(QStringLiteral("default.skin"));
    const QStringList colour = skin.records.value(QStringLiteral("O"));
    if (colour.size() < 4)
        return p;
    p.main = QImage(QStringLiteral(VELTO_DATA_DIR "/skins/") +
                    skin.records.value(QStringLiteral("Main")).value(1))
                 .convertToFormat(QImage::Format_RGB32);
    p.transparent = qRgb(colour[1].toInt(), colour[2].toInt(), colour[3].toInt());
    p.close = skin.rect(QStringLiteral("B1"));
    const QRegularExpression element(QStringLiteral("^[BKCILTXSD]\\d+$"));
    for (const QString &code : skin.records.keys()) {
        // Digit groups give glyph sizes, not their width: take a generous strip.
        if (element.match(code).hasMatch())
            p.taken << (code.startsWith('D') ? skin.digits(code, 10) : skin.rect(code));
    }
    // Whole neighbourhoods of one kind, so a one-pixel difference in placement cannot blur
    // the checks: the first point whose square around it is all hole, or all bare skin.
    auto first = [&p](int radius, int step, bool hole) {
        const QRect square(-radius, -radius, 2 * radius + 1, 2 * radius + 1);
        for (int y = radius; y + radius < p.main.height(); y += step)
            for (int x = radius; x + radius < p.main.width(); x += step) {
                bool all =
                    hole || std::none_of(p.taken.begin(), p.taken.end(), [&](const QRect &r) {
                        return r.intersects(square.translated(x, y));
                    });
                for (int dy = -radius; all && dy <= radius; dy += step)
                    for (int dx = -radius; all && dx <= radius; dx += step)
                        all = (p.main.pixel(x + dx, y + dy) == p.transparent) == hole;
                if (all)
                    return QPoint(x, y);
            }
        return QPoint(-1, -1);
    };
    p.bare = first(6, 3, false);
    p.hole = first(1, 1, true);
    return p;
}

// The first skin pixel whose block of factor x factor screen pixels at `window` is not
// all the main picture, or `beneath` where the skin is transparent, or nothing. Pixels
// under elements are left out.
QString wrongBlock(const QImage &screen, const ShippedPlayer &player, const QRect &window,
                   int factor, QColor beneath)
{
    for (int y = 0; y < player.main.height(); ++y) {
        for (int x = 0; x < player.main.width(); ++x) {
            const QRgb skin = player.main.pixel(x, y);
            const bool hole = skin == player.transparent;
            const QRect spot = QRect(x, y, 1, 1).adjusted(-1, -1, 1, 1);
            if (!hole && std::any_of(player.taken.begin(), player.taken.end(),
                                     [&](const QRect &r) { return r.intersects(spot); }))
                continue;
            const QRgb want = hole ? beneath.rgb() : skin;
            for (int d = 0; d < factor * factor; ++d) {
                const QPoint at =
                    window.topLeft() + QPoint(x, y) * factor + QPoint(d % factor, d / factor);
                if (screen.pixel(at) != want)
                    return QString::asprintf("skin %d,%d at %d,%d: %s instead of %s", x, y, at.x(),
                                             at.y(), qPrintable(QColor(screen.pixel(at)).name()),
                                             qPrintable(QColor(want).name()));
            }
        }
    }
    return {};
}

QPoint topLeft(const QString &window)
{
    return windowGeometry(window).topLeft();
}

// Drags the window by its bare spot in five steps, each one followed until
// the window has come along; returns where the window is once it has
// settled at `expected`, or when the wait gives up.
QPoint drag(const QString &window, QPoint grip, QPoint by, QPoint expected)
{
    const QPoint start = topLeft(window);
    const QPoint from = start + grip;
    xdotool({"mousemove", QString::number(from.x()), QString::number(from.y()), "mousedown", "1"});
    for (int step = 1; step <= 5; ++step) {
        const QPoint at = from + by * step / 5;
        xdotool({"mousemove", QString::number(at.x()), QString::number(at.y())});
        if (!waitUntil([&] { return topLeft(window) == start + by * step / 5; }))
            break;
    }
    xdotool({"mouseup", "1"});
    waitUntil([&] { return topLeft(window) == expected; });
    return topLeft(window);
}

class ShapedWindow : public E2e
{
protected:
    void SetUp() override
    {
        E2e::SetUp();
        if (IsSkipped())
            return;
        ASSERT_FALSE(player.main.isNull()) << "the shipped player skin is missing";
        ASSERT_GE(player.hole.x(), 0) << "the player skin has no transparent area";
        ASSERT_GE(player.bare.x(), 0) << "the player skin has no bare spot to drag by";
        ASSERT_FALSE(player.close.isEmpty()) << "the player skin has no close button";
    }

    const ShippedPlayer player = shippedPlayer();
};

} // namespace

TEST_F(ShapedWindow, HolesLetClicksThroughTheSkinDragsSnapsOpensItsMenuAndCloses)
{
    const QColor beneath(0x13, 0x57, 0x9b);
    Backdrop backdrop(beneath);
    VeltoProcess velto;
    velto.writeSettings({{"winsnap", "1"}, {"winsavepos", "1"}, {"x", "300"}, {"y", "200"}});
    const QString window = velto.startWindow();
    ASSERT_FALSE(window.isEmpty());
    const QRect placed(QPoint(300, 200), player.main.size());
    const QColor skin(player.main.pixel(player.bare));
    // Placed once mapped, and painted a little later.
    waitUntil([&] {
        return windowGeometry(window) == placed &&
               screenPixel(placed.topLeft() + player.bare) == skin;
    });
    const QRect frame = windowGeometry(window);
    ASSERT_EQ(frame, placed);
    EXPECT_EQ(screenPixel(frame.topLeft() + player.hole), beneath);
    EXPECT_EQ(screenPixel(frame.topLeft() + player.bare), skin);

    const int before = backdrop.clicks;
    click(frame.topLeft() + player.hole);
    EXPECT_TRUE(waitUntil([&] { return backdrop.clicks == before + 1; }))
        << "a click in the hole reaches the window beneath";
    // Had the click on the skin reached the backdrop, it would have come
    // before the click in the hole that follows it.
    click(frame.topLeft() + player.bare);
    click(frame.topLeft() + player.hole);
    ASSERT_TRUE(waitUntil([&] { return backdrop.clicks >= before + 2; }));
    EXPECT_EQ(backdrop.clicks, before + 2) << "a click on the skin stays with Velto";

    EXPECT_EQ(drag(window, player.bare, {150, 100}, {450, 300}), QPoint(450, 300));
    // 10 pixels from the left edge is inside the snapping distance.
    EXPECT_EQ(drag(window, player.bare, {-440, 0}, {0, 300}), QPoint(0, 300));

    // Sorted: the menu may change the stacking order.
    auto windows = [&velto] {
        QStringList ids = velto.windows();
        ids.sort();
        return ids;
    };
    const QStringList shown = windows();
    click(topLeft(window) + player.bare, "3");
    EXPECT_TRUE(waitUntil([&] { return windows().size() == shown.size() + 1; }))
        << "the menu opened as a window of its own";
    key(QStringLiteral("Escape"));
    ASSERT_TRUE(waitUntil([&] { return windows() == shown; }))
        << "Escape closes the menu and nothing else";

    // Where the window was is saved by Lifecycle's test.
    click(windowGeometry(window).topLeft() + player.close.center());
    EXPECT_TRUE(velto.waitForExit()) << "the close button did not end Velto";
}

// On a screen of ratio 2 every skin pixel is a block of one colour and the
// shape is cut at the same scale. How the factor is chosen is ScreenScale's.
TEST_F(ShapedWindow, ScalesByTheScreensWholeFactorCrispAndWithItsShapeExact)
{
    const QColor beneath(0x24, 0x68, 0xac);
    Backdrop backdrop(beneath);
    // No hover look or tool tip over the picture.
    xdotool({"mousemove", QString::number(backdrop.geometry().right()),
             QString::number(backdrop.geometry().bottom())});
    VeltoProcess velto;
    velto.writeSettings({{"winsavepos", "1"}, {"x", "40"}, {"y", "30"}});
    velto.setEnvironment(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    const QString window = velto.startWindow();
    ASSERT_FALSE(window.isEmpty());

    const QRect placed(QPoint(40, 30) * 2, player.main.size() * 2);
    QString wrong;
    // Placed once mapped, and painted a little later.
    waitUntil([&] {
        if (windowGeometry(window) != placed)
            return false;
        wrong = wrongBlock(grabScreen(), player, placed, 2, beneath);
        return wrong.isEmpty();
    });
    ASSERT_EQ(windowGeometry(window), placed);
    EXPECT_TRUE(wrong.isEmpty()) << wrong.toStdString();

    const int before = backdrop.clicks;
    click(placed.topLeft() + player.hole * 2 + QPoint(1, 1));
    EXPECT_TRUE(waitUntil([&] { return backdrop.clicks == before + 1; }))
        << "a click in the hole reaches the window beneath";
    click(placed.topLeft() + player.close.center() * 2);
    EXPECT_TRUE(velto.waitForExit()) << "the close button, scaled, ends Velto";
}
