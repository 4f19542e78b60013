// Draws every picture Velto ships: the skins of each mode (main and resource
// bitmaps plus their .skin files), the glyph sheets they use, nocover.bmp and,
// with --icons, the program's icon at the sizes icon themes look for.
// Restyling a skin means editing this file and running scripts/make-skins; the
// output is byte-for-byte the same on every run, so a diff shows real changes.

#include "app/appicon.h"

#include <QColor>
#include <QConicalGradient>
#include <QDir>
#include <QFont>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRegion>
#include <QSaveFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

// One palette for every mode, so switching skins feels like one device.
const QColor kBodyTop(0x3a, 0x44, 0x4f);
const QColor kBodyBottom(0x1d, 0x23, 0x29);
const QColor kEdge(0x0a, 0x0d, 0x10);
const QColor kGlass(0x0b, 0x10, 0x14);
const QColor kCyan(0x46, 0xd2, 0xf0);
const QColor kAmber(0xff, 0xb4, 0x40);
const QColor kGreen(0x7c, 0xe8, 0x8a);
const QColor kText(0xdc, 0xe4, 0xec);
const QColor kCaption(0x8a, 0x99, 0xa7);
const QColor kKeyTop(0x51, 0x5d, 0x6a);
const QColor kKeyBottom(0x2c, 0x33, 0x3b);
const QColor kOperTop(0x2e, 0x67, 0x78);
const QColor kOperBottom(0x18, 0x3a, 0x45);
const QColor kWarmTop(0x86, 0x5a, 0x2a);
const QColor kWarmBottom(0x4a, 0x30, 0x16);
const QColor kListBack(0x10, 0x16, 0x1b);
const QColor kMagenta(255, 0, 255);

const QString kSans = QStringLiteral("DejaVu Sans");
const QString kMono = QStringLiteral("DejaVu Sans Mono");

QColor mix(const QColor &a, const QColor &b, qreal t)
{
    return QColor(qRound(a.red() + (b.red() - a.red()) * t),
                  qRound(a.green() + (b.green() - a.green()) * t),
                  qRound(a.blue() + (b.blue() - a.blue()) * t));
}

QColor alpha(const QColor &c, int a)
{
    QColor r = c;
    r.setAlpha(a);
    return r;
}

QFont makeFont(const QString &family, int px, bool bold, qreal spacing = 0)
{
    QFont f(family);
    f.setPixelSize(px);
    f.setBold(bold);
    f.setStyleStrategy(QFont::PreferAntialias);
    f.setHintingPreference(QFont::PreferFullHinting);
    if (spacing != 0)
        f.setLetterSpacing(QFont::AbsoluteSpacing, spacing);
    return f;
}

void caption(QPainter &p, const QRectF &r, const QString &text, int align = Qt::AlignLeft,
             int px = 8, const QColor &colour = kCaption, qreal spacing = 0.8)
{
    p.save();
    p.setFont(makeFont(kSans, px, true, spacing));
    p.setPen(alpha(QColor(0, 0, 0), 150));
    p.drawText(r.translated(0, 1), align | Qt::AlignVCenter, text);
    p.setPen(colour);
    p.drawText(r, align | Qt::AlignVCenter, text);
    p.restore();
}

QPainterPath roundRect(const QRectF &r, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(r, radius, radius);
    return path;
}

enum class Icon {
    None,
    Play,
    Pause,
    Stop,
    Prev,
    Next,
    Rewind,
    Forward,
    Eject,
    Close,
    Minimise,
    Menu,
    Gear,
    Palette,
    Mixer,
    Find,
    Jump,
    Disc,
    Open,
    Save,
    Clear,
    AddFolder,
    Note,
    Mic,
    Calc,
    Page,
    Clock,
    Radio,
    Waves,
    Globe,
    Print,
    Up,
    Down,
    Left,
    Right,
    Home,
    Refresh,
    Plus,
    Minus,
    Edit,
    Mute,
    ScanDown,
    ScanUp,
    Lap,
    Reset,
    StartStop,
    Info,
};

QPainterPath triangle(QPointF a, QPointF b, QPointF c)
{
    QPainterPath path;
    path.moveTo(a);
    path.lineTo(b);
    path.lineTo(c);
    path.closeSubpath();
    return path;
}

QPainterPath circle(QPointF c, qreal r)
{
    QPainterPath path;
    path.addEllipse(c, r, r);
    return path;
}

// Icons are drawn in a 20 x 20 box centred on the origin; knock-outs use the
// Clear composition mode, which is why each icon gets a layer of its own.
void iconShapes(QPainter &p, Icon icon, const QColor &c)
{
    const auto fill = [&](const QPainterPath &path) { p.fillPath(path, c); };
    const auto knock = [&](const QPainterPath &path) {
        p.save();
        p.setCompositionMode(QPainter::CompositionMode_Clear);
        p.fillPath(path, Qt::black);
        p.restore();
    };
    const auto stroke = [&](const QPainterPath &path, qreal width) {
        p.strokePath(path, QPen(c, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    };
    const auto line = [&](QPointF a, QPointF b, qreal width) {
        QPainterPath path(a);
        path.lineTo(b);
        stroke(path, width);
    };
    switch (icon) {
    case Icon::None:
        break;
    case Icon::Play:
        fill(triangle({-5, -7.5}, {8, 0}, {-5, 7.5}));
        break;
    case Icon::Pause:
        fill(roundRect({-6, -7, 4.5, 14}, 1));
        fill(roundRect({1.5, -7, 4.5, 14}, 1));
        break;
    case Icon::Stop:
        fill(roundRect({-6, -6, 12, 12}, 1.5));
        break;
    case Icon::Prev:
        fill(roundRect({-7.5, -6.5, 2.6, 13}, 0.8));
        fill(triangle({7, -6.5}, {7, 6.5}, {-4.2, 0}));
        break;
    case Icon::Next:
        fill(roundRect({4.9, -6.5, 2.6, 13}, 0.8));
        fill(triangle({-7, -6.5}, {-7, 6.5}, {4.2, 0}));
        break;
    case Icon::Rewind:
        fill(triangle({0.5, -6}, {0.5, 6}, {-8.5, 0}));
        fill(triangle({9, -6}, {9, 6}, {0, 0}));
        break;
    case Icon::Forward:
        fill(triangle({-0.5, -6}, {-0.5, 6}, {8.5, 0}));
        fill(triangle({-9, -6}, {-9, 6}, {0, 0}));
        break;
    case Icon::ScanDown:
        line({-1, -6}, {-7, 0}, 2.2);
        line({-7, 0}, {-1, 6}, 2.2);
        line({6, -6}, {0, 0}, 2.2);
        line({0, 0}, {6, 6}, 2.2);
        break;
    case Icon::ScanUp:
        line({1, -6}, {7, 0}, 2.2);
        line({7, 0}, {1, 6}, 2.2);
        line({-6, -6}, {0, 0}, 2.2);
        line({0, 0}, {-6, 6}, 2.2);
        break;
    case Icon::Eject:
        fill(triangle({-7, 1.5}, {7, 1.5}, {0, -7}));
        fill(roundRect({-7, 4, 14, 3}, 0.8));
        break;
    case Icon::Close:
        line({-4.5, -4.5}, {4.5, 4.5}, 2.4);
        line({4.5, -4.5}, {-4.5, 4.5}, 2.4);
        break;
    case Icon::Minimise:
        line({-5, 4}, {5, 4}, 2.4);
        break;
    case Icon::Menu:
        line({-5.5, -4.5}, {5.5, -4.5}, 2);
        line({-5.5, 0}, {5.5, 0}, 2);
        line({-5.5, 4.5}, {5.5, 4.5}, 2);
        break;
    case Icon::Gear: {
        QPainterPath path;
        for (int i = 0; i < 32; ++i) {
            const qreal a = (i - 0.5) * 2 * M_PI / 32;
            const qreal r = (i % 4 < 2) ? 8.4 : 6.0;
            const QPointF pt(r * std::cos(a), r * std::sin(a));
            if (i == 0)
                path.moveTo(pt);
            else
                path.lineTo(pt);
        }
        path.closeSubpath();
        fill(path);
        knock(circle({0, 0}, 2.8));
        break;
    }
    case Icon::Palette: {
        QPainterPath path;
        path.addEllipse(QRectF(-8.5, -7, 17, 14));
        fill(path);
        knock(circle({-3.5, -2.5}, 1.6));
        knock(circle({1, -3.8}, 1.6));
        knock(circle({4.8, -0.8}, 1.6));
        knock(circle({-2.2, 3.4}, 2.3));
        break;
    }
    case Icon::Mixer:
        for (int i = 0; i < 3; ++i) {
            const qreal x = -5.5 + i * 5.5;
            const qreal knobY = (i == 0) ? 2.5 : (i == 1 ? -3.5 : 0.5);
            line({x, -7.5}, {x, 7.5}, 1.4);
            fill(roundRect({x - 2.6, knobY - 1.8, 5.2, 3.6}, 1));
        }
        break;
    case Icon::Find: {
        QPainterPath ring;
        ring.addEllipse(QPointF(-2, -2), 5, 5);
        stroke(ring, 2.3);
        line({2, 2}, {7, 7}, 3);
        break;
    }
    case Icon::Jump:
        line({-8, 0}, {1, 0}, 2.3);
        fill(triangle({0, -5}, {6, 0}, {0, 5}));
        fill(roundRect({6.8, -6.5, 2.4, 13}, 0.8));
        break;
    case Icon::Disc:
        fill(circle({0, 0}, 8.5));
        knock(circle({0, 0}, 2.4));
        break;
    case Icon::Open: {
        QPainterPath back;
        back.moveTo(-8.5, -6);
        back.lineTo(-3, -6);
        back.lineTo(-1.5, -4);
        back.lineTo(6.5, -4);
        back.lineTo(6.5, 6.5);
        back.lineTo(-8.5, 6.5);
        back.closeSubpath();
        fill(back);
        QPainterPath flap;
        flap.moveTo(-6, -1);
        flap.lineTo(9, -1);
        flap.lineTo(6.5, 6.5);
        flap.lineTo(-8.5, 6.5);
        flap.closeSubpath();
        knock(flap.translated(0, -1.2));
        fill(flap);
        break;
    }
    case Icon::Save: {
        line({0, -8}, {0, 1}, 2.4);
        fill(triangle({-5, -1}, {5, -1}, {0, 4.5}));
        QPainterPath tray({-7.5, 2});
        tray.lineTo(-7.5, 7);
        tray.lineTo(7.5, 7);
        tray.lineTo(7.5, 2);
        stroke(tray, 2.2);
        break;
    }
    case Icon::Clear: {
        fill(roundRect({-7, -6.5, 14, 2.2}, 0.8));
        fill(roundRect({-2.5, -8.5, 5, 2.6}, 0.8));
        QPainterPath body;
        body.moveTo(-5.5, -3);
        body.lineTo(5.5, -3);
        body.lineTo(4.5, 8);
        body.lineTo(-4.5, 8);
        body.closeSubpath();
        fill(body);
        knock(roundRect({-2.2, -1, 1.3, 7}, 0.6));
        knock(roundRect({0.9, -1, 1.3, 7}, 0.6));
        break;
    }
    case Icon::AddFolder: {
        QPainterPath back;
        back.moveTo(-8.5, -4);
        back.lineTo(-4, -4);
        back.lineTo(-2.5, -2);
        back.lineTo(8.5, -2);
        back.lineTo(8.5, 7.5);
        back.lineTo(-8.5, 7.5);
        back.closeSubpath();
        fill(back);
        knock(roundRect({-1.2, -0.5, 2.4, 7}, 0.5).translated(0.2, 0));
        knock(roundRect({-3.3, 1.8, 7, 2.4}, 0.5).translated(-0.2, 0));
        break;
    }
    case Icon::Note: {
        QPainterPath head;
        head.addEllipse(QPointF(-4.5, 5), 3.3, 2.5);
        head.addEllipse(QPointF(4.5, 3), 3.3, 2.5);
        fill(head);
        fill(QPainterPath(roundRect({-2.2, -6, 1.8, 11}, 0.5)));
        fill(QPainterPath(roundRect({6.8, -8, 1.8, 11}, 0.5)));
        QPainterPath beam;
        beam.moveTo(-2.2, -6);
        beam.lineTo(8.6, -8);
        beam.lineTo(8.6, -4.8);
        beam.lineTo(-2.2, -2.8);
        beam.closeSubpath();
        fill(beam);
        break;
    }
    case Icon::Mic: {
        fill(roundRect({-3.5, -9, 7, 11.5}, 3.5));
        QPainterPath cup;
        cup.moveTo(-6.2, -1.5);
        cup.arcTo(QRectF(-6.2, -7.5, 12.4, 12.4), 180, 180);
        stroke(cup, 1.7);
        line({0, 5}, {0, 8}, 1.8);
        line({-4, 8.5}, {4, 8.5}, 2);
        break;
    }
    case Icon::Calc:
        fill(roundRect({-7, -9, 14, 18}, 2));
        knock(roundRect({-4.8, -6.8, 9.6, 4}, 0.8));
        for (int row = 0; row < 3; ++row)
            for (int col = 0; col < 3; ++col)
                knock(roundRect({-4.8 + col * 3.6, -0.6 + row * 3, 2.4, 2}, 0.4));
        break;
    case Icon::Page: {
        QPainterPath page;
        page.moveTo(-6.5, -9);
        page.lineTo(3, -9);
        page.lineTo(6.5, -5.5);
        page.lineTo(6.5, 9);
        page.lineTo(-6.5, 9);
        page.closeSubpath();
        fill(page);
        for (int i = 0; i < 4; ++i)
            knock(QPainterPath(roundRect({-4, -3.5 + i * 3, i == 3 ? 5.0 : 8.0, 1.3}, 0.5)));
        knock(triangle({3, -9}, {3, -5.5}, {6.5, -5.5}).translated(-0.8, 0.8));
        break;
    }
    case Icon::Clock:
        fill(circle({0, 0}, 8.8));
        knock(circle({0, 0}, 7));
        line({0, 0}, {0, -5}, 1.8);
        line({0, 0}, {3.6, 1.8}, 1.8);
        break;
    case Icon::Radio:
        fill(roundRect({-9, -3.5, 18, 12}, 2));
        knock(circle({-3.8, 2.5}, 3.2));
        fill(circle({-3.8, 2.5}, 1.2));
        knock(roundRect({1.8, -0.8, 5, 1.8}, 0.5));
        knock(roundRect({1.8, 3.4, 5, 1.8}, 0.5));
        line({-6, -3.5}, {5, -9.5}, 1.4);
        break;
    case Icon::Waves: {
        fill(circle({0, 4}, 2.2));
        for (int i = 0; i < 2; ++i) {
            const qreal r = 5.5 + i * 4;
            QPainterPath arc;
            arc.arcMoveTo(QRectF(-r, 4 - r, 2 * r, 2 * r), 40);
            arc.arcTo(QRectF(-r, 4 - r, 2 * r, 2 * r), 40, 100);
            stroke(arc, 1.9);
        }
        break;
    }
    case Icon::Globe: {
        QPainterPath ring;
        ring.addEllipse(QPointF(0, 0), 8, 8);
        stroke(ring, 1.6);
        QPainterPath meridian;
        meridian.addEllipse(QPointF(0, 0), 3.6, 8);
        stroke(meridian, 1.3);
        line({-8, 0}, {8, 0}, 1.3);
        line({-6.5, -4.4}, {6.5, -4.4}, 1.1);
        line({-6.5, 4.4}, {6.5, 4.4}, 1.1);
        break;
    }
    case Icon::Print:
        stroke(QPainterPath(roundRect({-5, -8.5, 10, 5}, 0.5)), 1.6);
        fill(roundRect({-8.5, -3.5, 17, 8}, 1.5));
        knock(roundRect({-5.5, 2, 11, 7.5}, 0.5));
        fill(roundRect({-4.5, 3, 9, 6.5}, 0.4));
        knock(roundRect({-3, 5, 6, 1.1}, 0.3));
        break;
    case Icon::Up:
        fill(triangle({-6, 3.5}, {6, 3.5}, {0, -4}));
        break;
    case Icon::Down:
        fill(triangle({-6, -3.5}, {6, -3.5}, {0, 4}));
        break;
    case Icon::Left:
        fill(triangle({3.5, -6}, {3.5, 6}, {-4, 0}));
        break;
    case Icon::Right:
        fill(triangle({-3.5, -6}, {-3.5, 6}, {4, 0}));
        break;
    case Icon::Home: {
        fill(triangle({-9, -0.5}, {9, -0.5}, {0, -8.5}));
        fill(QPainterPath(roundRect({-6, -1, 12, 9}, 0.5)));
        knock(roundRect({-1.6, 2.5, 3.2, 5.5}, 0.5));
        break;
    }
    case Icon::Refresh: {
        QPainterPath arc;
        arc.arcMoveTo(QRectF(-6.5, -6.5, 13, 13), 60);
        arc.arcTo(QRectF(-6.5, -6.5, 13, 13), 60, 280);
        stroke(arc, 2.3);
        fill(triangle({1.2, -9.6}, {6.8, -5.2}, {0.6, -3.2}));
        break;
    }
    case Icon::Plus:
        line({-6, 0}, {6, 0}, 2.6);
        line({0, -6}, {0, 6}, 2.6);
        break;
    case Icon::Minus:
        line({-6, 0}, {6, 0}, 2.6);
        break;
    case Icon::Edit: {
        QPainterPath pencil;
        pencil.moveTo(-7.5, 7.5);
        pencil.lineTo(-6.5, 3.5);
        pencil.lineTo(4, -7);
        pencil.lineTo(7, -4);
        pencil.lineTo(-3.5, 6.5);
        pencil.closeSubpath();
        fill(pencil);
        knock(QPainterPath(triangle({2, -5}, {5, -2}, {4.2, -2.8}).translated(0, 0)));
        line({1.6, -4.4}, {4.4, -1.6}, 0.9);
        break;
    }
    case Icon::Mute: {
        QPainterPath speaker;
        speaker.moveTo(-8, -3);
        speaker.lineTo(-4.5, -3);
        speaker.lineTo(0.5, -7.5);
        speaker.lineTo(0.5, 7.5);
        speaker.lineTo(-4.5, 3);
        speaker.lineTo(-8, 3);
        speaker.closeSubpath();
        fill(speaker);
        line({3.5, -3}, {8.5, 3}, 2);
        line({8.5, -3}, {3.5, 3}, 2);
        break;
    }
    case Icon::Lap: {
        QPainterPath ring;
        ring.addEllipse(QPointF(0, 1.5), 7, 7);
        stroke(ring, 1.8);
        fill(roundRect({-2, -9, 4, 2.4}, 0.6));
        line({0, 1.5}, {0, -2.5}, 1.8);
        line({0, 1.5}, {3, 3}, 1.8);
        break;
    }
    case Icon::Reset: {
        QPainterPath arc;
        arc.arcMoveTo(QRectF(-6.5, -6.5, 13, 13), 120);
        arc.arcTo(QRectF(-6.5, -6.5, 13, 13), 120, -290);
        stroke(arc, 2.3);
        fill(triangle({-7.5, -8}, {-1.5, -8.5}, {-5.5, -2.5}));
        break;
    }
    case Icon::Info:
        fill(circle({0, -6}, 1.9));
        fill(roundRect({-1.6, -2.5, 3.2, 10}, 0.8));
        fill(roundRect({-3.6, -2.5, 3, 2}, 0.5));
        fill(roundRect({-3.6, 5.8, 7.2, 2}, 0.5));
        break;
    case Icon::StartStop:
        fill(triangle({-8, -6.5}, {1, 0}, {-8, 6.5}));
        fill(roundRect({2.5, -6.5, 2.4, 13}, 0.6));
        fill(roundRect({6.2, -6.5, 2.4, 13}, 0.6));
        break;
    }
}

// An icon with a soft shadow underneath, centred in box.
void drawIcon(QPainter &p, Icon icon, const QRectF &box, const QColor &colour, bool glow = false)
{
    if (icon == Icon::None)
        return;
    const int size = int(std::ceil(std::max(box.width(), box.height()))) + 4;
    QImage layer(size, size, QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    {
        QPainter lp(&layer);
        lp.setRenderHint(QPainter::Antialiasing);
        lp.translate(size / 2.0, size / 2.0);
        const qreal scale = std::min(box.width(), box.height()) / 20.0;
        lp.scale(scale, scale);
        iconShapes(lp, icon, colour);
    }
    QImage shade = layer;
    {
        QPainter sp(&shade);
        sp.setCompositionMode(QPainter::CompositionMode_SourceIn);
        sp.fillRect(shade.rect(), glow ? alpha(colour, 90) : QColor(0, 0, 0, 150));
    }
    const QPointF at = box.center() - QPointF(size / 2.0, size / 2.0);
    if (glow) {
        for (const QPointF d : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)})
            p.drawImage(at + d, shade);
    } else {
        p.drawImage(at + QPointF(0, 1), shade);
    }
    p.drawImage(at, layer);
}

enum class Face { Round, Pill, Key, Operator, Warm, Small };

QPainterPath faceShape(const QRectF &r, Face face)
{
    QPainterPath path;
    switch (face) {
    case Face::Round:
        path.addEllipse(r);
        break;
    case Face::Pill:
        path.addRoundedRect(r, r.height() / 2, r.height() / 2);
        break;
    case Face::Small:
        path.addRoundedRect(r, 4, 4);
        break;
    default:
        path.addRoundedRect(r, 5, 5);
        break;
    }
    return path;
}

void drawFace(QPainter &p, const QRectF &r, Face face, bool pressed)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    // The socket: a recess whose lower rim catches the light.
    QLinearGradient socket(r.topLeft(), r.bottomLeft());
    socket.setColorAt(0, QColor(0x07, 0x09, 0x0b));
    socket.setColorAt(1, QColor(0x4c, 0x57, 0x62));
    p.fillPath(faceShape(r, face), socket);

    QColor top = kKeyTop, bottom = kKeyBottom;
    if (face == Face::Operator) {
        top = kOperTop;
        bottom = kOperBottom;
    } else if (face == Face::Warm) {
        top = kWarmTop;
        bottom = kWarmBottom;
    }
    const QRectF capRect = r.adjusted(1.5, 1.5, -1.5, -1.5);
    const QPainterPath cap = faceShape(capRect, face);
    QLinearGradient g(capRect.topLeft(), capRect.bottomLeft());
    if (pressed) {
        g.setColorAt(0, bottom.darker(150));
        g.setColorAt(1, mix(top, bottom, 0.5).darker(115));
    } else {
        g.setColorAt(0, top);
        g.setColorAt(1, bottom);
    }
    p.fillPath(cap, g);
    p.setClipPath(cap);
    if (pressed) {
        // Inner shadow along the top: the cap sits below the rim.
        p.strokePath(cap.translated(0, 2), QPen(QColor(0, 0, 0, 140), 3));
        p.strokePath(cap, QPen(alpha(kCyan, 70), 1.2));
    } else {
        QLinearGradient shine(capRect.topLeft(), capRect.bottomLeft());
        shine.setColorAt(0, QColor(255, 255, 255, 90));
        shine.setColorAt(0.45, QColor(255, 255, 255, 0));
        shine.setColorAt(1, QColor(0, 0, 0, 60));
        p.strokePath(cap, QPen(QBrush(shine), 2));
        if (face == Face::Round) {
            QRadialGradient sheen(capRect.center() - QPointF(0, capRect.height() * 0.35),
                                  capRect.width() * 0.5);
            sheen.setColorAt(0, QColor(255, 255, 255, 38));
            sheen.setColorAt(1, QColor(255, 255, 255, 0));
            p.fillPath(cap, sheen);
        }
    }
    p.restore();
}

struct ButtonArt
{
    ButtonArt(QRect r, Face f, Icon i, QString t = {}, int px = 8)
        : rect(r), face(f), icon(i), text(std::move(t)), textPx(px)
    {
    }
    QRect rect;
    Face face;
    Icon icon;
    QString text;
    int textPx;
    bool hot = false; // icon in the accent colour even when released
};

void drawButton(QPainter &p, const ButtonArt &b, bool pressed)
{
    const QRectF r(b.rect);
    drawFace(p, r, b.face, pressed);
    const QPointF shift = pressed ? QPointF(0.5, 1) : QPointF(0, 0);
    QColor ink = pressed ? kCyan : (b.hot ? kCyan : kText);
    if (b.face == Face::Warm && !pressed)
        ink = QColor(0xff, 0xe2, 0xbc);
    const qreal side = std::min(r.width(), r.height());
    if (b.text.isEmpty()) {
        const qreal box = (b.face == Face::Round) ? side * 0.46 : side * 0.62;
        drawIcon(p, b.icon,
                 QRectF(0, 0, box, box).translated(r.center() - QPointF(box, box) / 2 + shift), ink,
                 pressed || b.hot);
        return;
    }
    QRectF textRect = r.translated(shift);
    if (b.icon != Icon::None) {
        const qreal box = side * 0.62;
        QFontMetricsF fm(makeFont(kSans, b.textPx, true, 0.6));
        const qreal total = box + 3 + fm.horizontalAdvance(b.text);
        const qreal left = r.center().x() - total / 2;
        drawIcon(p, b.icon, QRectF(left, r.center().y() - box / 2, box, box).translated(shift), ink,
                 pressed);
        textRect =
            QRectF(left + box + 3, r.top(), total - box - 3 + 2, r.height()).translated(shift);
        caption(p, textRect, b.text, Qt::AlignLeft, b.textPx, ink, 0.6);
        return;
    }
    p.save();
    if (pressed || b.hot) {
        // A faint halo keeps pressed captions legible on the darker cap.
        p.setFont(makeFont(kSans, b.textPx, true, 0.6));
        p.setPen(alpha(kCyan, 60));
        for (const QPointF d : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)})
            p.drawText(textRect.translated(d), Qt::AlignCenter, b.text);
    }
    p.restore();
    caption(p, textRect, b.text, Qt::AlignHCenter, b.textPx, ink, 0.6);
}

struct SegStyle
{
    QColor lit = kAmber;
    QColor back = kGlass;
    qreal skew = 0.08;
};

QColor ghostOf(const SegStyle &s)
{
    return mix(s.back, s.lit, 0.085);
}

// Seven bars a..g of a segment digit in a cell of w x h.
std::array<QPainterPath, 7> segmentPaths(qreal w, qreal h, qreal skew)
{
    const qreal t = std::max(1.7, std::min(w * 0.19, h * 0.105));
    const qreal mid = h / 2;
    const qreal left = t * 0.5 + mid * skew + w * 0.1;
    const qreal right = w - t * 0.5 - mid * skew - w * 0.1;
    const qreal top = t * 0.5 + h * 0.05;
    const qreal bottom = h - t * 0.5 - h * 0.05;
    const qreal gap = t * 0.22;
    const auto sk = [&](QPointF pt) { return QPointF(pt.x() + (mid - pt.y()) * skew, pt.y()); };
    const auto bar = [&](QPointF a, QPointF b) {
        QPainterPath path;
        const bool horizontal = std::abs(a.y() - b.y()) < 0.01;
        if (horizontal) {
            const qreal x1 = a.x() + gap, x2 = b.x() - gap, y = a.y();
            path.moveTo(sk({x1, y}));
            path.lineTo(sk({x1 + t / 2, y - t / 2}));
            path.lineTo(sk({x2 - t / 2, y - t / 2}));
            path.lineTo(sk({x2, y}));
            path.lineTo(sk({x2 - t / 2, y + t / 2}));
            path.lineTo(sk({x1 + t / 2, y + t / 2}));
        } else {
            const qreal y1 = a.y() + gap, y2 = b.y() - gap, x = a.x();
            path.moveTo(sk({x, y1}));
            path.lineTo(sk({x + t / 2, y1 + t / 2}));
            path.lineTo(sk({x + t / 2, y2 - t / 2}));
            path.lineTo(sk({x, y2}));
            path.lineTo(sk({x - t / 2, y2 - t / 2}));
            path.lineTo(sk({x - t / 2, y1 + t / 2}));
        }
        path.closeSubpath();
        return path;
    };
    return {bar({left, top}, {right, top}),     bar({right, top}, {right, mid}),
            bar({right, mid}, {right, bottom}), bar({left, bottom}, {right, bottom}),
            bar({left, mid}, {left, bottom}),   bar({left, top}, {left, mid}),
            bar({left, mid}, {right, mid})};
}

int segmentMask(QChar ch)
{
    static const int masks[10] = {0x3f, 0x06, 0x5b, 0x4f, 0x66, 0x6d, 0x7d, 0x07, 0x7f, 0x6f};
    if (ch.isDigit())
        return masks[ch.digitValue()];
    if (ch == QLatin1Char('-'))
        return 0x40;
    return 0;
}

void fillLit(QPainter &p, const QPainterPath &path, const QColor &lit, qreal height)
{
    p.strokePath(path, QPen(alpha(lit, 55), 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    QLinearGradient g(0, 0, 0, height);
    g.setColorAt(0, lit.lighter(118));
    g.setColorAt(1, lit.darker(108));
    p.fillPath(path, g);
}

// One glyph of a digit sheet: blank cells keep their unlit segments visible,
// the way a real display does; "." and ":" live in the narrow left part.
void drawSegGlyph(QPainter &p, const QRectF &cell, QChar ch, int narrow, const SegStyle &st,
                  bool lit = true)
{
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.translate(cell.topLeft());
    p.setClipRect(QRectF(0, 0, cell.width(), cell.height()));
    const qreal h = cell.height();
    if (ch == QLatin1Char('.') || ch == QLatin1Char(':')) {
        const qreal t = std::max(1.7, std::min(cell.width() * 0.19, h * 0.105));
        const qreal r = t * 0.62;
        const qreal cx = narrow / 2.0;
        QPainterPath dots;
        if (ch == QLatin1Char('.')) {
            dots.addEllipse(QPointF(cx - h * 0.45 * st.skew, h - t * 0.5 - h * 0.05), r, r);
        } else {
            dots.addEllipse(QPointF(cx + h * 0.18 * st.skew, h * 0.32), r, r);
            dots.addEllipse(QPointF(cx - h * 0.18 * st.skew, h * 0.68), r, r);
        }
        if (lit)
            fillLit(p, dots, st.lit, h);
        else
            p.fillPath(dots, ghostOf(st));
        p.restore();
        return;
    }
    const auto segs = segmentPaths(cell.width(), h, st.skew);
    const int mask = lit ? segmentMask(ch) : 0;
    for (int i = 0; i < 7; ++i)
        if (!(mask & (1 << i)))
            p.fillPath(segs[i], ghostOf(st));
    for (int i = 0; i < 7; ++i)
        if (mask & (1 << i))
            fillLit(p, segs[i], st.lit, h);
    p.restore();
}

QImage digitSheetImage(int w, int h, int narrow, const SegStyle &st)
{
    QImage img(14 * w, h, QImage::Format_ARGB32_Premultiplied);
    img.fill(st.back);
    QPainter p(&img);
    const QString order = QStringLiteral("0123456789 .:-");
    for (int col = 0; col < 14; ++col)
        drawSegGlyph(p, QRectF(col * w, 0, w, h), order[col], narrow, st);
    return img;
}

void drawTextGlyph(QPainter &p, const QRectF &cell, QChar ch, const QFont &font, const QColor &fore)
{
    if (ch == QLatin1Char(' ') || ch.unicode() == 127)
        return;
    p.save();
    p.setFont(font);
    p.setClipRect(cell);
    p.setPen(alpha(fore, 60));
    p.drawText(cell.translated(0, 0.6), Qt::AlignCenter, QString(ch));
    p.setPen(fore);
    p.drawText(cell, Qt::AlignCenter, QString(ch));
    p.restore();
}

// Character sheet: codes 32 to 127, sixteen to a row.
QImage charSheetImage(int w, int h, const QFont &font, const QColor &fore, const QColor &back)
{
    QImage img(16 * w, 6 * h, QImage::Format_ARGB32_Premultiplied);
    img.fill(back);
    QPainter p(&img);
    p.setRenderHint(QPainter::TextAntialiasing);
    for (int code = 32; code < 128; ++code)
        drawTextGlyph(p, QRectF((code % 16) * w, (code / 16 - 2) * h, w, h), QChar(code), font,
                      fore);
    return img;
}

const QString kLetterSymbols = QStringLiteral(":()-'!_+\\/[]^&%.=$#");

// Letter sheet: capitals on row 0, digits and symbols on row 1, "?" and "*" on row 2.
QImage letterSheetImage(int w, int h, const QFont &font, const QColor &fore, const QColor &back)
{
    QImage img(31 * w, 3 * h, QImage::Format_ARGB32_Premultiplied);
    img.fill(back);
    QPainter p(&img);
    p.setRenderHint(QPainter::TextAntialiasing);
    const auto put = [&](int row, int col, QChar ch) {
        drawTextGlyph(p, QRectF(col * w, row * h, w, h), ch, font, fore);
    };
    for (int i = 0; i < 26; ++i)
        put(0, i, QChar('A' + i));
    put(0, 27, QLatin1Char('"'));
    for (int i = 0; i < 10; ++i)
        put(1, i, QChar('0' + i));
    for (int k = 0; k < kLetterSymbols.size(); ++k)
        put(1, k + 12, kLetterSymbols[k]);
    put(2, 3, QLatin1Char('?'));
    put(2, 4, QLatin1Char('*'));
    return img;
}

// Where a character sits on a sheet, as the program will look it up.
QPoint glyphCell(int type, QChar ch)
{
    if (type == 2 || type == 3)
        ch = ch.toUpper();
    if (type == 1 || type == 2) {
        const int code = (ch.unicode() >= 32 && ch.unicode() <= 127) ? ch.unicode() : 32;
        return QPoint(code % 16, code / 16 - 2);
    }
    const ushort u = ch.unicode();
    if (u >= 'A' && u <= 'Z')
        return QPoint(u - 'A', 0);
    if (u >= '0' && u <= '9')
        return QPoint(u - '0', 1);
    const int k = kLetterSymbols.indexOf(ch);
    if (k >= 0)
        return QPoint(k + 12, 1);
    if (ch == QLatin1Char('"'))
        return QPoint(27, 0);
    if (ch == QLatin1Char('*'))
        return QPoint(4, 2);
    if (ch == QLatin1Char('?'))
        return QPoint(3, 2);
    if (ch == QLatin1Char('@'))
        return QPoint(8, 0);
    return QPoint(29, 0);
}

// A letter sheet whose digits, "-", ":" and "." are segment glyphs, for
// groups that show text such as "h:mm:ss.t" yet should look like the digit
// displays. Every cell is one width, so ":" and "." sit in the middle of theirs;
// the blank keeps its unlit segments, as on a digit sheet.
QImage segmentLetterSheetImage(int w, int h, const QFont &font, const SegStyle &st)
{
    QImage img = letterSheetImage(w, h, font, st.lit, st.back);
    QPainter p(&img);
    for (const QChar ch : QStringLiteral("0123456789-:. ")) {
        const QPoint at = glyphCell(3, ch);
        const QRectF cell(at.x() * w, at.y() * h, w, h);
        p.fillRect(cell, st.back);
        drawSegGlyph(p, cell, ch, w, st, ch != QLatin1Char(' '));
    }
    return img;
}

// Packs pressed faces, knobs and sheets into the resource bitmap, row by row,
// in the order they are asked for: the same calls give the same layout.
class Atlas
{
public:
    explicit Atlas(int width) : m_width(width) {}

    QPoint reserve(QSize size)
    {
        if (m_x > 0 && m_x + size.width() > m_width) {
            m_y += m_rowHeight + kPad;
            m_x = 0;
            m_rowHeight = 0;
        }
        const QPoint at(m_x, m_y);
        m_x += size.width() + kPad;
        m_rowHeight = std::max(m_rowHeight, size.height());
        m_usedWidth = std::max(m_usedWidth, at.x() + size.width());
        return at;
    }

    void put(QPoint at, const QImage &img) { m_items.push_back({at, img}); }

    QSize size() const { return QSize(std::max(m_usedWidth, 1), std::max(m_y + m_rowHeight, 1)); }

    QImage compose(const QColor &fill) const
    {
        QImage img(size(), QImage::Format_ARGB32_Premultiplied);
        img.fill(fill);
        QPainter p(&img);
        for (const auto &[at, part] : m_items)
            p.drawImage(at, part);
        return img;
    }

private:
    static constexpr int kPad = 2;
    int m_width;
    int m_x = 0, m_y = 0, m_rowHeight = 0, m_usedWidth = 0;
    std::vector<std::pair<QPoint, QImage>> m_items;
};

// Premultiplied drawing to an opaque bitmap. With cut set, pixels mostly outside
// the outline become the transparent colour, so no pink fringe is left behind.
QImage flatten(const QImage &src, const QColor &under, bool cut)
{
    QImage out(src.size(), QImage::Format_RGB32);
    const QRgb magenta = kMagenta.rgb();
    for (int y = 0; y < src.height(); ++y) {
        const auto *in = reinterpret_cast<const QRgb *>(src.constScanLine(y));
        auto *o = reinterpret_cast<QRgb *>(out.scanLine(y));
        for (int x = 0; x < src.width(); ++x) {
            const QRgb px = in[x];
            const int a = qAlpha(px);
            if (cut && a < 128) {
                o[x] = magenta;
                continue;
            }
            const int r = qRed(px) + (255 - a) * under.red() / 255;
            const int g = qGreen(px) + (255 - a) * under.green() / 255;
            const int b = qBlue(px) + (255 - a) * under.blue() / 255;
            o[x] = qRgb(std::min(r, 255), std::min(g, 255), std::min(b, 255));
            if (o[x] == magenta)
                o[x] = qRgb(254, 0, 255); // only the outside may have the cut colour
        }
    }
    return out;
}

bool savePng(const QImage &img, const QString &path, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    QImageWriter writer(&file, "png");
    if (!writer.write(img)) {
        *error = writer.errorString();
        return false;
    }
    if (!file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

bool saveText(const QString &text, const QString &path, QString *error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    file.write(text.toUtf8());
    if (!file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

QString quoted(const QString &s)
{
    return QLatin1Char('"') + s + QLatin1Char('"');
}

QString rgb(const QColor &c)
{
    return QStringLiteral("%1,%2,%3").arg(c.red()).arg(c.green()).arg(c.blue());
}

QString rectText(const QRect &r)
{
    return QStringLiteral("%1,%2,%3,%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

QFont labelFont(const QString &fontText, int size)
{
    const int colon = fontText.indexOf(QLatin1Char(':'));
    const QString name = colon < 0 ? fontText : fontText.left(colon).trimmed();
    const QString style = colon < 0 ? QString() : fontText.mid(colon + 1).toUpper();
    QFont f(name.isEmpty() ? kSans : name);
    f.setPointSizeF(std::abs(size));
    f.setBold(style.contains(QLatin1Char('B')));
    f.setItalic(style.contains(QLatin1Char('I')));
    return f;
}

struct Sheet
{
    QPoint at;
    int w = 0, h = 0, narrow = 0, type = 0;
    SegStyle seg;
    QColor back;
    bool segments = false; // a letter sheet with segment digits
};

enum class Outline { TransparentColour, Polygon };

class Skin
{
public:
    Skin(QString skinFile, QString stem, QString types, QString name, QSize size,
         QPainterPath outline, Outline kind, int atlasWidth = 512)
        : m_skinFile(std::move(skinFile)), m_stem(std::move(stem)), m_size(size),
          m_outline(std::move(outline)), m_kind(kind), m_atlas(atlasWidth),
          m_base(size, QImage::Format_ARGB32_Premultiplied)
    {
        m_base.fill(Qt::transparent);
        m_painter = std::make_unique<QPainter>(&m_base);
        m_painter->setRenderHint(QPainter::Antialiasing);
        m_painter->setRenderHint(QPainter::TextAntialiasing);
        m_head << quoted(QStringLiteral("Velto Skin/") + types) + QLatin1Char(',') + quoted(name)
               << QStringLiteral("1,0")
               << quoted(QStringLiteral("Main")) + QLatin1Char(',') + quoted(mainFile())
               << quoted(QStringLiteral("Resource")) + QLatin1Char(',') + quoted(resFile())
               << QStringLiteral("\"*\",\"\"")
               << QStringLiteral("0,0,%1,0,0,0").arg(rgb(kBodyBottom));
        m_records << QStringLiteral("; Drawn by scripts/skingen/skingen.cpp: change the drawing "
                                    "there and run scripts/make-skins.");
        drawBody();
    }

    Skin(const Skin &) = delete;
    Skin &operator=(const Skin &) = delete;

    QPainter &p() { return *m_painter; }
    // Ends the drawing; the bitmaps are read only after this.
    void finish() { m_painter.reset(); }
    QString mainFile() const { return m_stem + QStringLiteral("-main.png"); }
    QString resFile() const { return m_stem + QStringLiteral("-res.png"); }
    QString stem() const { return m_stem; }

    void note(const QString &text) { m_records << QStringLiteral("/") + text; }

    void setPolygon(const QPolygon &poly) { m_polygon = poly; }

    Sheet digitSheet(int w, int h, int narrow, const SegStyle &st = {})
    {
        Sheet s{m_atlas.reserve(QSize(14 * w, h)), w, h, narrow, 0, st, st.back};
        m_atlas.put(s.at, digitSheetImage(w, h, narrow, st));
        return s;
    }

    Sheet charSheet(int w, int h, const QFont &font, const QColor &fore, const QColor &back,
                    int type = 1)
    {
        Sheet s{m_atlas.reserve(QSize(16 * w, 6 * h)), w, h, w, type, {}, back};
        m_atlas.put(s.at, charSheetImage(w, h, font, fore, back));
        return s;
    }

    Sheet letterSheet(int w, int h, const QFont &font, const QColor &fore, const QColor &back)
    {
        Sheet s{m_atlas.reserve(QSize(31 * w, 3 * h)), w, h, w, 3, {}, back};
        m_atlas.put(s.at, letterSheetImage(w, h, font, fore, back));
        return s;
    }

    Sheet segmentLetterSheet(int w, int h, const QFont &font, const SegStyle &st)
    {
        Sheet s{m_atlas.reserve(QSize(31 * w, 3 * h)), w, h, w, 3, st, st.back, true};
        m_atlas.put(s.at, segmentLetterSheetImage(w, h, font, st));
        return s;
    }

    // The name is never drawn; it gives the button its keyboard key: a name of
    // one character is its own key, otherwise the character after "&" is.
    void button(int command, const ButtonArt &art, const QString &name, const QString &tip)
    {
        const QPoint face = m_atlas.reserve(art.rect.size());
        m_buttons.push_back({art, face});
        m_records << QStringLiteral("B%1,%2,%3,%4,%5,%6")
                         .arg(command)
                         .arg(rectText(art.rect))
                         .arg(face.x())
                         .arg(face.y())
                         .arg(quoted(name), quoted(tip));
    }

    void link(int n, const ButtonArt &art, const QString &name, const QString &tip,
              const QString &key)
    {
        const QPoint face = m_atlas.reserve(art.rect.size());
        m_buttons.push_back({art, face});
        m_records << QStringLiteral("K%1,%2,%3,%4,%5,%6,%7")
                         .arg(n)
                         .arg(rectText(art.rect))
                         .arg(face.x())
                         .arg(face.y())
                         .arg(quoted(name), quoted(tip), quoted(key));
    }

    // A digit-cell group; the bitmap under it shows the group's cells unlit,
    // so the window looks right before the program first writes to it.
    void digits(int group, QPoint at, const Sheet &s, int mode, const QString &tip,
                const QString &sample)
    {
        m_records << QStringLiteral("D%1,%2,%3,%4,%5,%6,%7,%8,%9,0,%10,%11")
                         .arg(group)
                         .arg(at.x())
                         .arg(at.y())
                         .arg(s.at.x())
                         .arg(s.at.y())
                         .arg(s.w)
                         .arg(s.h)
                         .arg(s.narrow)
                         .arg(s.type)
                         .arg(mode)
                         .arg(quoted(tip));
        QString layout;
        if (s.type == 0) {
            switch (mode) {
            case 1:
            case 2:
                layout = QStringLiteral("88:88");
                break;
            case 3:
                layout = QStringLiteral("888.8");
                break;
            case 4:
                layout = QStringLiteral("888.888");
                break;
            case 5:
                layout = QStringLiteral("88:88:88");
                break;
            default:
                layout = QString(std::abs(mode), QLatin1Char('8'));
            }
        } else if (s.segments) {
            p().fillRect(QRect(at.x(), at.y(), s.w * std::abs(mode), s.h), s.back);
            // Unlit segments where the sample has digits, unlit points where it has points.
            for (const QChar ch : sample.leftJustified(std::abs(mode), QLatin1Char(' '), true))
                layout += ch.isDigit() || ch == QLatin1Char(' ') ? QLatin1Char('8') : ch;
        }
        qreal x = at.x();
        for (const QChar ch : layout) {
            const bool thin = s.type == 0 && ch != QLatin1Char('8');
            drawSegGlyph(p(), QRectF(x, at.y(), s.w, s.h), ch, s.narrow, s.seg, false);
            x += thin ? s.narrow : s.w;
        }
        if (s.type != 0 && !s.segments)
            p().fillRect(QRect(at.x(), at.y(), s.w * std::abs(mode), s.h), s.back);
        QString shown = sample;
        if (s.type != 0)
            shown = sample.leftJustified(std::abs(mode), QLatin1Char(' '), true);
        m_show.push_back([s, at, shown](QPainter &pp, const QImage &res) {
            int x = at.x();
            for (const QChar ch : shown) {
                QRect src;
                if (s.type == 0) {
                    const QString order = QStringLiteral("0123456789 .:-");
                    int col = order.indexOf(ch);
                    if (col < 0)
                        col = 10;
                    const int width = (col == 11 || col == 12) ? s.narrow : s.w;
                    src = QRect(s.at.x() + col * s.w, s.at.y(), width, s.h);
                } else {
                    const QPoint cell = glyphCell(s.type, ch);
                    src = QRect(s.at.x() + cell.x() * s.w, s.at.y() + cell.y() * s.h, s.w, s.h);
                }
                pp.drawImage(QPoint(x, at.y()), res, src);
                x += src.width();
            }
        });
    }

    // An indicator light: the bitmap holds the dark lamp, the program paints it lit.
    void light(int n, const QRect &r, const QColor &colour, int shape, const QString &tip)
    {
        m_records << QStringLiteral("I%1,%2,%3,%4,%5")
                         .arg(n)
                         .arg(rectText(r))
                         .arg(rgb(colour))
                         .arg(shape)
                         .arg(quoted(tip));
        QPainter &pp = p();
        const QRectF socket = QRectF(r).adjusted(-1.5, -1.5, 1.5, 1.5);
        QPainterPath path;
        if (shape == 1)
            path.addEllipse(socket);
        else
            path.addRoundedRect(socket, 2, 2);
        QLinearGradient g(socket.topLeft(), socket.bottomLeft());
        g.setColorAt(0, QColor(0, 0, 0, 200));
        g.setColorAt(1, QColor(255, 255, 255, 50));
        pp.fillPath(path, g);
        QPainterPath lamp;
        if (shape == 1)
            lamp.addEllipse(QRectF(r));
        else
            lamp.addRect(QRectF(r));
        pp.fillPath(lamp, mix(kGlass, colour, 0.22));
        m_show.push_back([r, colour, shape](QPainter &q, const QImage &) {
            q.save();
            q.setRenderHint(QPainter::Antialiasing, false);
            q.setPen(Qt::NoPen);
            q.setBrush(colour);
            if (shape == 1)
                q.drawEllipse(r);
            else
                q.drawRect(r);
            q.restore();
        });
    }

    void label(int n, const QRect &r, const QColor &fore, int size, const QString &font,
               const QString &tip, const QString &sample)
    {
        m_records << QStringLiteral("L%1,%2,%3,%4,%5,%6")
                         .arg(n)
                         .arg(rectText(r))
                         .arg(rgb(fore))
                         .arg(size)
                         .arg(quoted(font), quoted(tip));
        m_show.push_back([=](QPainter &q, const QImage &) {
            q.save();
            q.setFont(labelFont(font, size));
            q.setPen(fore);
            q.setClipRect(r);
            q.drawText(r, Qt::AlignLeft | Qt::AlignVCenter, sample);
            q.restore();
        });
    }

    // A list area sits in a recessed well whose inside has the list's own colour.
    void list(int n, const QRect &r, const QColor &fore, const QColor &back, int size,
              const QString &font, const QString &tip, const QStringList &sample,
              bool selectable = true)
    {
        m_records << QStringLiteral("X%1,%2,%3,%4,%5,%6,%7")
                         .arg(n)
                         .arg(rectText(r))
                         .arg(rgb(fore), rgb(back))
                         .arg(size)
                         .arg(quoted(font), quoted(tip));
        well(QRectF(r).adjusted(-2, -2, 2, 2), 4, back);
        m_show.push_back([=](QPainter &q, const QImage &) {
            q.save();
            q.fillRect(r, back);
            QFont f(font);
            f.setPointSizeF(size);
            q.setFont(f);
            q.setClipRect(r);
            const qreal lineHeight = QFontMetricsF(f).height() + 1;
            for (int i = 0; i < sample.size(); ++i) {
                const QRectF row(r.x(), r.y() + i * lineHeight, r.width(), lineHeight);
                if (i == 1 && selectable)
                    q.fillRect(row, alpha(kCyan, 70));
                q.setPen(fore);
                q.drawText(row.adjusted(3, 0, -3, 0), Qt::AlignLeft | Qt::AlignVCenter, sample[i]);
            }
            q.restore();
        });
    }

    void area(int n, const QRect &r, const QString &tip)
    {
        m_records << QStringLiteral("C%1,%2,%3").arg(n).arg(rectText(r)).arg(quoted(tip));
    }

    // The hint is drawn faintly in the field; one on the right stays clear of
    // the text a mode puts in the field.
    void entry(int n, const QRect &r, const QColor &fore, int size, const QString &font,
               const QString &tip, const QString &hint = {},
               Qt::Alignment hintAlign = Qt::AlignLeft)
    {
        m_records << QStringLiteral("T%1,%2,%3,%4,%5,%6")
                         .arg(n)
                         .arg(rectText(r))
                         .arg(rgb(fore))
                         .arg(size)
                         .arg(quoted(font), quoted(tip));
        well(QRectF(r).adjusted(-2, -2, 2, 2), 4, kListBack);
        if (!hint.isEmpty())
            caption(p(), QRectF(r).adjusted(6, 0, -6, 0), hint, hintAlign, 7,
                    mix(kListBack, kCaption, 0.55), 1);
        m_show.push_back([r, fore](QPainter &q, const QImage &) {
            q.save();
            q.setPen(alpha(fore, 140));
            q.drawRect(QRectF(r).adjusted(0.5, 0.5, -0.5, -0.5));
            q.restore();
        });
    }

    // A horizontal slider: a groove on the main bitmap and a knob image of
    // knob x height on the resource bitmap that already holds the groove behind it.
    void slider(int n, const QRect &r, int knob, const QString &tip)
    {
        const QPoint face = m_atlas.reserve(QSize(knob, r.height()));
        m_knobs.push_back({r, knob, face});
        m_records << QStringLiteral("S%1,%2,%3,%4,0,%5,%6")
                         .arg(n)
                         .arg(rectText(r))
                         .arg(face.x())
                         .arg(face.y())
                         .arg(knob)
                         .arg(quoted(tip));
        const QRectF groove(r.x() + 1, r.center().y() - 2, r.width() - 2, 5);
        QPainter &pp = p();
        pp.fillPath(roundRect(groove.adjusted(-1, -1, 1, 1), 3.5),
                    alpha(QColor(255, 255, 255), 28));
        QLinearGradient g(groove.topLeft(), groove.bottomLeft());
        g.setColorAt(0, QColor(0x02, 0x03, 0x04));
        g.setColorAt(1, QColor(0x16, 0x1c, 0x22));
        pp.fillPath(roundRect(groove, 2.5), g);
        m_show.push_back([r, knob, face](QPainter &q, const QImage &res) {
            const int x = r.x() + (r.width() - knob) * 2 / 5;
            q.drawImage(QPoint(x, r.y()), res, QRect(face, QSize(knob, r.height())));
        });
    }

    void showArea(const QRect &r, const QString &text)
    {
        m_show.push_back([r, text](QPainter &q, const QImage &) {
            q.save();
            q.fillRect(r, QBrush(QColor(80, 200, 240, 60), Qt::BDiagPattern));
            q.setPen(QColor(120, 220, 250));
            q.drawRect(r.adjusted(0, 0, -1, -1));
            q.drawText(r, Qt::AlignCenter, text);
            q.restore();
        });
    }

    // A recessed panel; its inside is flat so glyph cells blend into it.
    void well(const QRectF &r, qreal radius, const QColor &fill)
    {
        QPainter &pp = p();
        QLinearGradient rim(r.topLeft(), r.bottomLeft());
        rim.setColorAt(0, QColor(0, 0, 0, 150));
        rim.setColorAt(1, QColor(255, 255, 255, 45));
        pp.fillPath(roundRect(r.adjusted(-1.5, -1.5, 1.5, 1.5), radius + 1.5), rim);
        const QPainterPath inner = roundRect(r, radius);
        pp.fillPath(inner, fill);
        pp.save();
        pp.setClipPath(inner);
        pp.strokePath(inner.translated(0, 1.5), QPen(QColor(0, 0, 0, 120), 2));
        pp.restore();
    }

    // A raised plate, for grouping controls.
    void plate(const QRectF &r, qreal radius)
    {
        QPainter &pp = p();
        const QPainterPath path = roundRect(r, radius);
        pp.fillPath(path.translated(0, 1), QColor(0, 0, 0, 70));
        QLinearGradient g(r.topLeft(), r.bottomLeft());
        g.setColorAt(0, QColor(255, 255, 255, 14));
        g.setColorAt(1, QColor(0, 0, 0, 30));
        pp.fillPath(path, g);
        pp.save();
        pp.setClipPath(path);
        QLinearGradient edge(r.topLeft(), r.bottomLeft());
        edge.setColorAt(0, QColor(255, 255, 255, 40));
        edge.setColorAt(0.3, QColor(255, 255, 255, 0));
        pp.strokePath(path, QPen(QBrush(edge), 2));
        pp.restore();
    }

    // A dark bezel around an area the program fills (cover, video, web page).
    void bezel(const QRect &r, const QString &hint)
    {
        well(QRectF(r).adjusted(-2, -2, 2, 2), 3, QColor(0x05, 0x07, 0x09));
        if (!hint.isEmpty())
            caption(p(), QRectF(r), hint, Qt::AlignCenter, 8, mix(kCaption, kGlass, 0.55));
    }

    bool write(const QString &folder, QString *error)
    {
        if (!savePng(mainImage(), folder + QLatin1Char('/') + mainFile(), error) ||
            !savePng(resourceImage(), folder + QLatin1Char('/') + resFile(), error))
            return false;
        QStringList lines = m_head;
        if (m_kind == Outline::TransparentColour)
            lines << QStringLiteral("O,") + rgb(kMagenta);
        lines << QStringLiteral("W,%1,%2").arg(m_size.width()).arg(m_size.height());
        lines << m_records;
        if (m_kind == Outline::Polygon) {
            lines << QStringLiteral("N%1").arg(m_polygon.size());
            for (const QPoint &pt : m_polygon)
                lines << QStringLiteral("P%1,%2").arg(pt.x()).arg(pt.y());
        }
        lines << QStringLiteral("E");
        return saveText(lines.join(QLatin1Char('\n')) + QLatin1Char('\n'),
                        folder + QLatin1Char('/') + m_skinFile, error);
    }

    QImage mainImage() const
    {
        QImage img = m_base.copy();
        {
            QPainter pp(&img);
            pp.setRenderHint(QPainter::Antialiasing);
            for (const auto &b : m_buttons)
                drawButton(pp, b.art, false);
        }
        return flatten(img, kEdge, m_kind == Outline::TransparentColour);
    }

    QImage resourceImage() const
    {
        Atlas atlas = m_atlas;
        for (const auto &b : m_buttons) {
            QImage face = m_base.copy(b.art.rect);
            {
                QPainter pp(&face);
                pp.setRenderHint(QPainter::Antialiasing);
                pp.translate(-b.art.rect.topLeft());
                drawButton(pp, b.art, true);
            }
            atlas.put(b.face, flatten(face, kEdge, false));
        }
        for (const auto &k : m_knobs) {
            const QRect src(k.track.x() + (k.track.width() - k.length) / 2, k.track.y(), k.length,
                            k.track.height());
            QImage img = m_base.copy(src);
            {
                QPainter pp(&img);
                pp.setRenderHint(QPainter::Antialiasing);
                drawFace(pp, QRectF(0.5, 0, k.length - 1, k.track.height()), Face::Small, false);
                const qreal cx = k.length / 2.0;
                pp.fillRect(QRectF(cx - 1, 3, 2, k.track.height() - 6), kCyan);
            }
            atlas.put(k.face, flatten(img, kEdge, false));
        }
        return flatten(atlas.compose(kBodyBottom), kBodyBottom, false);
    }

    // The window as a user would see it: lights lit, sample texts, and the
    // transparent colour shown as a checkerboard; below it every button
    // pressed, and the resource bitmap.
    QImage preview() const
    {
        const QImage main = mainImage();
        const QImage res = resourceImage();
        const int gap = 12;
        QImage out(std::max(m_size.width(), res.width()),
                   m_size.height() * 2 + res.height() + 2 * gap, QImage::Format_RGB32);
        out.fill(QColor(0x60, 0x60, 0x68));
        QPainter q(&out);
        for (int pass = 0; pass < 2; ++pass) {
            const int top = pass * (m_size.height() + gap);
            for (int y = 0; y < m_size.height(); y += 8)
                for (int x = 0; x < m_size.width(); x += 8)
                    q.fillRect(x, top + y, 8, 8,
                               ((x + y) / 8) % 2 ? QColor(200, 200, 200) : QColor(240, 240, 240));
            QImage shown = main.convertToFormat(QImage::Format_ARGB32);
            const QRegion region(m_polygon, Qt::OddEvenFill);
            for (int y = 0; y < shown.height(); ++y) {
                auto *line = reinterpret_cast<QRgb *>(shown.scanLine(y));
                for (int x = 0; x < shown.width(); ++x) {
                    const bool cut = m_kind == Outline::Polygon
                                         ? !region.contains(QPoint(x, y))
                                         : (line[x] & 0xffffff) == (kMagenta.rgb() & 0xffffff);
                    if (cut)
                        line[x] = 0;
                }
            }
            q.save();
            q.translate(0, top);
            q.drawImage(0, 0, shown);
            for (const auto &op : m_show)
                op(q, res);
            if (pass == 1)
                for (const auto &b : m_buttons)
                    q.drawImage(b.art.rect.topLeft(), res, QRect(b.face, b.art.rect.size()));
            q.restore();
        }
        q.drawImage(0, 2 * (m_size.height() + gap), res);
        return out;
    }

private:
    struct PlacedButton
    {
        ButtonArt art;
        QPoint face;
    };
    struct Knob
    {
        QRect track;
        int length;
        QPoint face;
    };

    void drawBody()
    {
        QPainter &pp = p();
        QLinearGradient g(0, 0, 0, m_size.height());
        g.setColorAt(0, kBodyTop);
        g.setColorAt(1, kBodyBottom);
        pp.fillPath(m_outline, g);
        pp.save();
        pp.setClipPath(m_outline);
        // Fine horizontal brushing: barely visible, but the metal stops looking like plastic.
        for (int y = 0; y < m_size.height(); y += 2)
            pp.fillRect(QRect(0, y, m_size.width(), 1),
                        QColor(255, 255, 255, (y * 7919 % 5) == 0 ? 6 : 3));
        QLinearGradient rim(0, 0, 0, m_size.height());
        rim.setColorAt(0, QColor(255, 255, 255, 80));
        rim.setColorAt(0.15, QColor(255, 255, 255, 10));
        rim.setColorAt(0.85, QColor(0, 0, 0, 20));
        rim.setColorAt(1, QColor(0, 0, 0, 110));
        pp.strokePath(m_outline, QPen(QBrush(rim), 5));
        pp.restore();
        pp.strokePath(m_outline, QPen(kEdge, 1.6));
    }

    QString m_skinFile, m_stem;
    QSize m_size;
    QPainterPath m_outline;
    Outline m_kind;
    QPolygon m_polygon;
    Atlas m_atlas;
    QImage m_base;
    std::unique_ptr<QPainter> m_painter;
    QStringList m_head, m_records;
    std::vector<PlacedButton> m_buttons;
    std::vector<Knob> m_knobs;
    std::vector<std::function<void(QPainter &, const QImage &)>> m_show;
};

struct Mode
{
    QString file;
    Icon icon;
    QString tip;
    QString name; // "&" marks the keyboard key
};

// K1..K8 load these; every skin carries the same strip so any mode is one click away.
// A mode's key is the same letter in every skin and no other button of any
// skin uses it, so pressing it twice never does something else the second time.
const Mode kModes[] = {
    {QStringLiteral("default.skin"), Icon::Note, QStringLiteral("Player"),
     QStringLiteral("Pla&yer")},
    {QStringLiteral("karaoke.skin"), Icon::Mic, QStringLiteral("Karaoke"),
     QStringLiteral("&Karaoke")},
    {QStringLiteral("calculator.skin"), Icon::Calc, QStringLiteral("Calculator"),
     QStringLiteral("&Calculator")},
    {QStringLiteral("notepad.skin"), Icon::Page, QStringLiteral("Notepad"),
     QStringLiteral("&Notepad")},
    {QStringLiteral("clock.skin"), Icon::Clock, QStringLiteral("Clock and stopwatch"),
     QStringLiteral("Cl&ock")},
    {QStringLiteral("fmtuner.skin"), Icon::Radio, QStringLiteral("FM tuner"),
     QStringLiteral("&FM tuner")},
    {QStringLiteral("webradio.skin"), Icon::Waves, QStringLiteral("Web radio"),
     QStringLiteral("&Web radio")},
    {QStringLiteral("browser.skin"), Icon::Globe, QStringLiteral("Web browser"),
     QStringLiteral("&Browser")},
};

// The mode strip; the current mode is a lit, fixed key rather than a button.
void modeStrip(Skin &s, QPoint at, int current, int size = 18, int gap = 3)
{
    for (int i = 0; i < 8; ++i) {
        const QRect r(at.x() + i * (size + gap), at.y(), size, size);
        if (i == current) {
            drawFace(s.p(), r, Face::Small, true);
            drawIcon(s.p(), kModes[i].icon, QRectF(r).adjusted(4.5, 4.5, -3.5, -3.5), kCyan, true);
            continue;
        }
        ButtonArt art{r, Face::Small, kModes[i].icon};
        s.link(i + 1, art, kModes[i].name, kModes[i].tip, kModes[i].file);
    }
}

// Menu, minimise and close, right-aligned ending at right.
void windowButtons(Skin &s, int right, int y, bool withSkinAndPrefs = false)
{
    int x = right - 20;
    // No key: one stray key press must not end the player (Ctrl+Q and the menu still quit).
    s.button(1, {QRect(x, y, 20, 20), Face::Round, Icon::Close}, QStringLiteral("Close"),
             QStringLiteral("Close"));
    x -= 24;
    s.button(2, {QRect(x, y, 20, 20), Face::Round, Icon::Minimise}, QStringLiteral("Minimise (&_)"),
             QStringLiteral("Minimise"));
    x -= 24;
    s.button(38, {QRect(x, y, 20, 20), Face::Round, Icon::Menu}, QStringLiteral("&Menu"),
             QStringLiteral("Menu"));
    if (withSkinAndPrefs) {
        x -= 24;
        s.button(5, {QRect(x, y, 20, 20), Face::Round, Icon::Gear},
                 QStringLiteral("Preferences (&,)"), QStringLiteral("Preferences"));
        x -= 24;
        s.button(6, {QRect(x, y, 20, 20), Face::Round, Icon::Palette},
                 QStringLiteral("Chan&ge skin"), QStringLiteral("Choose a skin"));
    }
}

// Volume down, up and mute beside a volume slider. "-" and "+" are the keys a
// user tries first; "0" mutes, since M already opens the menu in every skin.
void volumeButtons(Skin &s, const QRect &down, const QRect &up, const QRect &mute)
{
    s.button(8, {down, Face::Small, Icon::Minus}, QStringLiteral("Volume down (&-)"),
             QStringLiteral("Volume down"));
    s.button(7, {up, Face::Small, Icon::Plus}, QStringLiteral("Volume up (&+)"),
             QStringLiteral("Volume up"));
    s.button(9, {mute, Face::Small, Icon::Mute}, QStringLiteral("Mute (&0)"),
             QStringLiteral("Mute, or sound back on"));
}

// The word mark, engraved into the body.
void logo(Skin &s, const QRectF &r, const QString &mode)
{
    QPainter &p = s.p();
    QFont f = makeFont(kSans, 13, true, 3);
    QPainterPath text;
    text.addText(0, 0, f, QStringLiteral("VELTO"));
    QRectF box = text.boundingRect();
    QFont small = makeFont(kSans, 7, true, 1.6);
    const qreal modeWidth = mode.isEmpty() ? 0 : QFontMetricsF(small).horizontalAdvance(mode) + 8;
    const QPointF origin(r.center().x() - (box.width() + modeWidth) / 2 - box.left(),
                         r.center().y() - box.center().y());
    text.translate(origin);
    p.fillPath(text.translated(0, 1), QColor(0, 0, 0, 160));
    QLinearGradient g(0, text.boundingRect().top(), 0, text.boundingRect().bottom());
    g.setColorAt(0, kCyan.lighter(135));
    g.setColorAt(1, kCyan.darker(120));
    p.fillPath(text, g);
    if (!mode.isEmpty())
        caption(p, QRectF(text.boundingRect().right() + 8, r.top(), modeWidth, r.height()), mode,
                Qt::AlignLeft, 7, kCaption, 1.6);
}

// A round-cornered outline whose top carries a raised crest between crestLeft
// and crestRight; corners of different radii keep it from looking boxed.
QPainterPath crestOutline(QSizeF size, qreal crestLeft, qreal crestRight, qreal crestHeight,
                          qreal radius, qreal bottomLeftRadius, qreal bottomRightRadius)
{
    const qreal w = size.width(), h = size.height(), top = crestHeight;
    QPainterPath path;
    path.moveTo(radius, top);
    path.lineTo(crestLeft - 22, top);
    path.cubicTo(crestLeft - 6, top, crestLeft - 4, 0, crestLeft + 12, 0);
    path.lineTo(crestRight - 12, 0);
    path.cubicTo(crestRight + 4, 0, crestRight + 6, top, crestRight + 22, top);
    path.lineTo(w - radius, top);
    path.arcTo(QRectF(w - 2 * radius, top, 2 * radius, 2 * radius), 90, -90);
    path.lineTo(w, h - bottomRightRadius);
    path.arcTo(QRectF(w - 2 * bottomRightRadius, h - 2 * bottomRightRadius, 2 * bottomRightRadius,
                      2 * bottomRightRadius),
               0, -90);
    path.lineTo(bottomLeftRadius, h);
    path.arcTo(QRectF(0, h - 2 * bottomLeftRadius, 2 * bottomLeftRadius, 2 * bottomLeftRadius), 270,
               -90);
    path.lineTo(0, top + radius);
    path.arcTo(QRectF(0, top, 2 * radius, 2 * radius), 180, -90);
    path.closeSubpath();
    return path;
}

QPainterPath polygonPath(const QPolygon &poly)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(poly));
    path.closeSubpath();
    return path;
}

const QString kLabelFont = QStringLiteral("DejaVu Sans");
const QString kLabelBold = QStringLiteral("DejaVu Sans:B");
const QString kListFont = QStringLiteral("DejaVu Sans");

std::unique_ptr<Skin> playerSkin()
{
    const QSize size(500, 366);
    auto skin = std::make_unique<Skin>(QStringLiteral("default.skin"), QStringLiteral("player"),
                                       QStringLiteral("PLAYER"), QStringLiteral("Velto Slate"),
                                       size, crestOutline(size, 206, 318, 10, 22, 38, 22),
                                       Outline::TransparentColour, 560);
    Skin &s = *skin;
    s.note(QStringLiteral("Velto's own player: slate body, amber display, cyan accents."));
    s.note(QStringLiteral("Playlist, cover and video area; the row of small keys at the top "
                          "left switches to every other mode."));
    QPainter &p = s.p();

    const SegStyle amber;
    const Sheet big = s.digitSheet(16, 28, 7, amber);
    const Sheet small = s.digitSheet(10, 17, 5, amber);
    const Sheet chars = s.charSheet(8, 14, makeFont(kMono, 12, false), kAmber, kGlass);
    const Sheet letters = s.letterSheet(7, 11, makeFont(kMono, 10, true), kCyan, kGlass);

    logo(s, QRectF(206, 1, 112, 22), QString());
    modeStrip(s, QPoint(20, 15), 0);
    windowButtons(s, 482, 14, true);
    s.button(3, {QRect(342, 14, 20, 20), Face::Round, Icon::Info},
             QStringLiteral("Track information (&?)"), QStringLiteral("About this track"));

    const QRect display(16, 44, 324, 108);
    s.well(display, 8, kGlass);
    caption(p, QRectF(26, 48, 60, 10), QStringLiteral("TIME"), Qt::AlignLeft, 7);
    caption(p, QRectF(160, 48, 40, 10), QStringLiteral("TRACK"), Qt::AlignLeft, 7);
    caption(p, QRectF(214, 48, 40, 10), QStringLiteral("CLOCK"), Qt::AlignLeft, 7);
    s.digits(0, QPoint(26, 60), big, 5, QStringLiteral("Playing time"), QStringLiteral(" 0:03:27"));
    s.digits(1, QPoint(160, 71), small, -3, QStringLiteral("Track number"), QStringLiteral(" 07"));
    s.digits(3, QPoint(214, 71), small, 1, QStringLiteral("Clock"), QStringLiteral("10:42"));
    s.label(9, QRect(260, 76, 24, 12), kAmber, 7, kLabelBold, QStringLiteral("~"),
            QStringLiteral("PM"));
    s.label(4, QRect(290, 60, 44, 12), kCyan, 7, kLabelBold, QStringLiteral("File type"),
            QStringLiteral("MP3"));
    s.label(7, QRect(290, 75, 44, 12), kCaption, 7, kLabelBold, QStringLiteral("Length"),
            QStringLiteral("4:18"));
    s.digits(2, QPoint(26, 95), chars, 37, QStringLiteral("Now playing"),
             QStringLiteral("Amber Lines - Night Drive (Long Version)"));
    s.digits(4, QPoint(26, 116), letters, -3, QStringLiteral("Bit rate"), QStringLiteral("192"));
    caption(p, QRectF(50, 116, 30, 11), QStringLiteral("KBPS"), Qt::AlignLeft, 7);
    s.digits(5, QPoint(82, 116), letters, -5, QStringLiteral("Sample rate"),
             QStringLiteral("44100"));
    caption(p, QRectF(119, 116, 20, 11), QStringLiteral("HZ"), Qt::AlignLeft, 7);
    s.label(12, QRect(140, 114, 110, 14), kCaption, 7, kLabelBold, QStringLiteral("Channel mode"),
            QStringLiteral("Joint Stereo"));
    s.label(26, QRect(288, 114, 46, 14), kCyan, 7, kLabelBold, QStringLiteral("Source"),
            QStringLiteral("Media"));
    s.light(22, QRect(278, 118, 6, 6), kCyan, 1, QStringLiteral("Media files"));

    struct Lamp
    {
        int n;
        const char *text;
        QColor colour;
    };
    const Lamp lamps[] = {{2, "PLAY", kGreen},  {3, "PAUSE", kAmber},  {9, "CONT", kCyan},
                          {10, "MUTE", kAmber}, {14, "LYRICS", kCyan}, {15, "CD", kAmber}};
    int lx = 26;
    for (const Lamp &l : lamps) {
        s.light(l.n, QRect(lx, 136, 6, 6), l.colour, 1, QString::fromLatin1(l.text));
        const QString text = QString::fromLatin1(l.text);
        const qreal w = QFontMetricsF(makeFont(kSans, 7, true, 0.8)).horizontalAdvance(text);
        caption(p, QRectF(lx + 10, 133, w + 4, 12), text, Qt::AlignLeft, 7);
        lx += int(w) + 22;
    }

    struct Toggle
    {
        int command, lamp;
        const char *text, *name, *tip;
    };
    const Toggle toggles[] = {
        {25, 5, "INTRO", "&Intro", "Intro scan: play the first ten seconds"},
        {26, 6, "STOP", "Stop after this item (&.)", "Stop after this item"},
        {27, 7, "REPEAT", "&Repeat", "Repeat this item"},
        {28, 8, "SHUFFLE", "S&huffle", "Shuffle"},
        {30, 13, "A-B", "&A-B loop", "A-B loop: mark the start, the end, then clear"}};
    for (int i = 0; i < 5; ++i) {
        const int x = 16 + i * 66;
        s.light(toggles[i].lamp, QRect(x + 3, 164, 6, 6), kCyan, 1,
                QString::fromLatin1(toggles[i].tip));
        ButtonArt art{QRect(x + 13, 158, 50, 18), Face::Pill, Icon::None,
                      QString::fromLatin1(toggles[i].text), 7};
        s.button(toggles[i].command, art, QString::fromLatin1(toggles[i].name),
                 QString::fromLatin1(toggles[i].tip));
    }

    s.slider(1, QRect(16, 182, 268, 14), 26, QStringLiteral("Position"));
    s.button(4, {QRect(290, 180, 50, 18), Face::Pill, Icon::None, QStringLiteral("REMAIN"), 7},
             QStringLiteral("Elapsed or remaining &time"),
             QStringLiteral("Elapsed or remaining time"));

    struct Transport
    {
        int command;
        Icon icon;
        const char *name, *tip;
    };
    const Transport transport[] = {{14, Icon::Prev, "Previous (&Z)", "Previous item"},
                                   {32, Icon::Rewind, "Back 10 s (&<)", "Back 10 seconds"},
                                   {12, Icon::Play, "&Play", "Play"},
                                   {11, Icon::Pause, "Pa&use", "Pause"},
                                   {10, Icon::Stop, "&Stop", "Stop"},
                                   {33, Icon::Forward, "Ahead 10 s (&>)", "Ahead 10 seconds"},
                                   {15, Icon::Next, "Ne&xt", "Next item"},
                                   {23, Icon::Eject, "Op&en", "Open media files"}};
    for (int i = 0; i < 8; ++i) {
        ButtonArt art{QRect(16 + i * 41, 202, 36, 36), Face::Round, transport[i].icon};
        art.hot = transport[i].command == 12;
        s.button(transport[i].command, art, QString::fromLatin1(transport[i].name),
                 QString::fromLatin1(transport[i].tip));
    }

    s.label(8, QRect(18, 245, 230, 14), kText, 8, kLabelBold, QStringLiteral("Playlist"),
            QStringLiteral("Late evening.m3u"));
    s.label(13, QRect(262, 245, 76, 14), kCaption, 7, kLabelBold, QStringLiteral("Items"),
            QStringLiteral("24 items"));
    s.list(1, QRect(18, 263, 320, 70), kText, kListBack, 8, kListFont, QStringLiteral("~"),
           {QStringLiteral("06  Harbour Lights"), QStringLiteral("07  Night Drive (Long Version)"),
            QStringLiteral("08  Glass Rain"), QStringLiteral("09  Slow Signal"),
            QStringLiteral("10  Morning Static")});
    struct PlButton
    {
        int command;
        Icon icon;
        const char *text, *name, *tip;
    };
    const PlButton plButtons[] = {
        {21, Icon::Open, "LOAD", "Load playlist (&[)", "Load a playlist"},
        {22, Icon::Save, "SAVE", "Save playlist (&])", "Save the playlist"},
        {24, Icon::AddFolder, "ADD", "Add a folder (&*)", "Add a folder"},
        {20, Icon::Clear, "CLEAR", "C&lear playlist", "Clear the playlist"}};
    for (int i = 0; i < 4; ++i) {
        ButtonArt art{QRect(16 + i * 82, 340, 78, 20), Face::Pill, plButtons[i].icon,
                      QString::fromLatin1(plButtons[i].text), 7};
        s.button(plButtons[i].command, art, QString::fromLatin1(plButtons[i].name),
                 QString::fromLatin1(plButtons[i].tip));
    }

    // Right column: cover and its side keys, titles, volume and balance, video.
    const QRect cover(352, 46, 94, 94);
    s.bezel(cover, QStringLiteral("COVER"));
    s.area(1, cover, QStringLiteral("Album cover: double-click to choose one"));
    const PlButton side[] = {{37, Icon::Disc, "", "Au&dio CD", "Media files or audio CD"},
                             {29, Icon::Mixer, "", "&Volume mixer", "Volume mixer"},
                             {150, Icon::Find, "", "Quick find (&/)", "Quick find"},
                             {39, Icon::Jump, "", "&Jump to", "Jump to"}};
    for (int i = 0; i < 4; ++i) {
        ButtonArt art{QRect(454, 44 + i * 25, 30, 21), Face::Key, side[i].icon};
        s.button(side[i].command, art, QString::fromLatin1(side[i].name),
                 QString::fromLatin1(side[i].tip));
    }
    s.label(1, QRect(352, 146, 134, 14), kText, 8, kLabelBold, QStringLiteral("Title"),
            QStringLiteral("Night Drive"));
    s.label(2, QRect(352, 161, 134, 13), kCyan, 7, kLabelFont, QStringLiteral("Artist and album"),
            QStringLiteral("Amber Lines - Coastline"));

    // Minus under the quiet end of the volume slider, plus under the loud end.
    s.plate(QRectF(348, 180, 140, 72), 7);
    caption(p, QRectF(356, 184, 30, 14), QStringLiteral("VOL"), Qt::AlignLeft, 7);
    s.slider(2, QRect(382, 184, 98, 14), 16, QStringLiteral("Volume"));
    volumeButtons(s, QRect(382, 200, 18, 16), QRect(462, 200, 18, 16), QRect(422, 200, 18, 16));
    caption(p, QRectF(356, 222, 30, 14), QStringLiteral("BAL"), Qt::AlignLeft, 7);
    p.fillRect(QRectF(430.5, 219, 1, 3), kCaption);
    s.slider(3, QRect(382, 222, 98, 14), 16, QStringLiteral("Balance: double-click to centre"));
    s.label(25, QRect(382, 237, 98, 12), kCaption, 7, kLabelBold, QStringLiteral("Balance"),
            QStringLiteral("Centre"));

    const QRect video(350, 259, 136, 74);
    s.bezel(video, QStringLiteral("VIDEO"));
    s.area(2, video, QStringLiteral("~"));
    s.label(15, QRect(350, 342, 136, 14), kCaption, 7, kLabelFont, QStringLiteral("Status"),
            QStringLiteral("Ready"));

    s.showArea(cover, QStringLiteral("C1"));
    s.showArea(video, QStringLiteral("C2"));
    return skin;
}

struct Key
{
    int command;
    Icon icon;
    const char *text; // drawn on the key
    const char *name; // not drawn: gives the keyboard key, see button()
    const char *tip;
    Face face = Face::Key;
};

void place(Skin &s, const Key &k, const QRect &r, int px = 8)
{
    ButtonArt art(r, k.face, k.icon, QString::fromUtf8(k.text), px);
    s.button(k.command, art, QString::fromLatin1(k.name), QString::fromUtf8(k.tip));
}

std::unique_ptr<Skin> karaokeSkin()
{
    const QSize size(440, 352);
    QPainterPath body = roundRect(QRectF(0, 18, 440, 334), 26);
    QPainterPath dome;
    dome.addEllipse(QRectF(70, 0, 300, 90));
    auto skin = std::make_unique<Skin>(
        QStringLiteral("karaoke.skin"), QStringLiteral("karaoke"), QStringLiteral("KARAOKE"),
        QStringLiteral("Velto Slate Karaoke"), size, body.united(dome), Outline::TransparentColour);
    Skin &s = *skin;
    s.note(QStringLiteral("Sing along: the lyrics follow the song line by line, and a "
                          "double-click on a line jumps to it."));
    QPainter &p = s.p();
    const Sheet big = s.digitSheet(16, 28, 7);
    const Sheet chars = s.charSheet(8, 14, makeFont(kMono, 12, false), kAmber, kGlass);

    logo(s, QRectF(150, 2, 140, 20), QStringLiteral("KARAOKE"));
    modeStrip(s, QPoint(20, 28), 1);
    windowButtons(s, 422, 27);

    s.well(QRect(16, 56, 408, 62), 7, kGlass);
    s.digits(0, QPoint(26, 73), big, 5, QStringLiteral("Playing time"), QStringLiteral(" 0:01:48"));
    s.digits(2, QPoint(150, 62), chars, 24, QStringLiteral("Now playing"),
             QStringLiteral("Harbour Lights"));
    s.label(2, QRect(150, 82, 192, 14), kCyan, 7, kLabelFont, QStringLiteral("Artist and album"),
            QStringLiteral("Amber Lines - Coastline"));
    s.label(10, QRect(350, 60, 70, 12), kCaption, 7, kLabelBold, QStringLiteral("Bit rate"),
            QStringLiteral("192 kbps"));
    s.label(11, QRect(350, 73, 70, 12), kCaption, 7, kLabelBold, QStringLiteral("Sample rate"),
            QStringLiteral("44100 Hz"));
    s.label(12, QRect(350, 86, 70, 12), kCaption, 7, kLabelBold, QStringLiteral("Channel mode"),
            QStringLiteral("Stereo"));
    struct Lamp
    {
        int n;
        const char *text;
        QColor colour;
    };
    const Lamp lamps[] = {
        {2, "PLAY", kGreen}, {3, "PAUSE", kAmber}, {14, "LYRICS", kCyan}, {10, "MUTE", kAmber}};
    for (int i = 0; i < int(std::size(lamps)); ++i) {
        const int x = 150 + i * 64;
        s.light(lamps[i].n, QRect(x, 104, 6, 6), lamps[i].colour, 1,
                QString::fromLatin1(lamps[i].text));
        caption(p, QRectF(x + 10, 101, 50, 12), QString::fromLatin1(lamps[i].text), Qt::AlignLeft,
                7);
    }

    s.list(4, QRect(18, 128, 404, 150), kText, kListBack, 12, kListFont, QStringLiteral("~"),
           {QStringLiteral("The harbour lights are burning low"),
            QStringLiteral("And every ship has somewhere to go"),
            QStringLiteral("I count the beams across the bay"),
            QStringLiteral("Until the night has slipped away"),
            QStringLiteral("Oh, harbour lights"), QStringLiteral("Oh, guide me home")});

    s.slider(1, QRect(16, 288, 408, 14), 26, QStringLiteral("Position"));
    const Key transport[] = {{14, Icon::Prev, "", "Previous (&Z)", "Previous item"},
                             {12, Icon::Play, "", "&Play", "Play"},
                             {11, Icon::Pause, "", "Pa&use", "Pause"},
                             {10, Icon::Stop, "", "&Stop", "Stop"},
                             {15, Icon::Next, "", "Ne&xt", "Next item"},
                             {23, Icon::Eject, "", "Op&en", "Open media files"}};
    for (int i = 0; i < 6; ++i) {
        ButtonArt art(QRect(16 + i * 41, 308, 36, 36), Face::Round, transport[i].icon);
        art.hot = transport[i].command == 12;
        s.button(transport[i].command, art, QString::fromLatin1(transport[i].name),
                 QString::fromLatin1(transport[i].tip));
    }
    // The speaker of the mute key names the row, where the other skins write VOL.
    s.plate(QRectF(266, 310, 158, 32), 7);
    s.slider(2, QRect(318, 319, 76, 14), 16, QStringLiteral("Volume"));
    volumeButtons(s, QRect(296, 317, 18, 18), QRect(398, 317, 18, 18), QRect(273, 317, 18, 18));
    return skin;
}

std::unique_ptr<Skin> calculatorSkin()
{
    const QSize size(420, 330);
    const QPolygon outline({QPoint(16, 10), QPoint(150, 10), QPoint(162, 0), QPoint(258, 0),
                            QPoint(270, 10), QPoint(404, 10), QPoint(420, 26), QPoint(420, 314),
                            QPoint(404, 330), QPoint(16, 330), QPoint(0, 314), QPoint(0, 26)});
    auto skin = std::make_unique<Skin>(QStringLiteral("calculator.skin"),
                                       QStringLiteral("calculator"), QStringLiteral("CALCULATOR"),
                                       QStringLiteral("Velto Slate Calculator"), size,
                                       polygonPath(outline), Outline::Polygon);
    Skin &s = *skin;
    s.setPolygon(outline);
    s.note(QStringLiteral("Four functions with memory, percent, roots and unit conversions."));
    s.note(QStringLiteral("Load a conversion file with the folder key, pick a conversion, then "
                          "press the arrows."));
    QPainter &p = s.p();

    logo(s, QRectF(162, 1, 96, 16), QString());
    modeStrip(s, QPoint(20, 18), 2);
    windowButtons(s, 404, 17);

    s.well(QRect(16, 46, 388, 58), 7, kGlass);
    s.label(23, QRect(26, 50, 368, 32), kAmber, 18, QStringLiteral("DejaVu Sans Mono:B"),
            QStringLiteral("~"), QStringLiteral("1234.5"));
    s.label(27, QRect(26, 84, 368, 16), kCyan, 8, kLabelBold, QStringLiteral("Conversion"),
            QStringLiteral("Miles to kilometres"));

    const int kx = 16, ky = 114, kw = 40, kh = 28, gap = 5;
    const auto cell = [&](int col, int row, int cols = 1, int rows = 1) {
        return QRect(kx + col * (kw + gap), ky + row * (kh + gap), cols * kw + (cols - 1) * gap,
                     rows * kh + (rows - 1) * gap);
    };
    const Key memory[] = {{63, Icon::None, "MC", "Memory c&lear", "Memory clear"},
                          {65, Icon::None, "MR", "Memory &recall", "Memory recall"},
                          {64, Icon::None, "MS", "Memory &store", "Memory store"},
                          {66, Icon::None, "M+", "Memory &plus", "Add to memory"}};
    const int memWidth = (5 * kw + 4 * gap - 3 * gap) / 4;
    for (int i = 0; i < 4; ++i)
        place(s, memory[i], QRect(kx + i * (memWidth + gap), ky, memWidth, kh - 6), 8);
    const int top = ky + kh - 6 + gap - (kh + gap);
    const auto at = [&](int col, int row, int cols = 1, int rows = 1) {
        return cell(col, row, cols, rows).translated(0, top - ky);
    };
    const Key keys[] = {
        {61, Icon::None, "AC", "&All clear", "All clear", Face::Warm},
        {62, Icon::None, "CE", "Clear &entry", "Clear entry", Face::Warm},
        {60, Icon::None, "\u2190", "&Delete last digit", "Backspace"},
        {56, Icon::None, "\u00b1", "Change si&gn", "Change sign"},
        {57, Icon::None, "%", "%", "Percent"},
        {47, Icon::None, "7", "7", "7"},
        {48, Icon::None, "8", "8", "8"},
        {49, Icon::None, "9", "9", "9"},
        {54, Icon::None, "\u00f7", "/", "Divide", Face::Operator},
        {58, Icon::None, "\u221a", "Square roo&t", "Square root"},
        {44, Icon::None, "4", "4", "4"},
        {45, Icon::None, "5", "5", "5"},
        {46, Icon::None, "6", "6", "6"},
        {53, Icon::None, "\u00d7", "*", "Multiply", Face::Operator},
        {59, Icon::None, "1/x", "&Inverse (1/x)", "Reciprocal"},
        {41, Icon::None, "1", "1", "1"},
        {42, Icon::None, "2", "2", "2"},
        {43, Icon::None, "3", "3", "3"},
        {52, Icon::None, "\u2212", "-", "Subtract", Face::Operator},
    };
    for (int i = 0; i < int(std::size(keys)); ++i) {
        const int col = i % 5, row = 1 + i / 5;
        const bool digit = QChar::fromLatin1(keys[i].text[0]).isDigit() && keys[i].text[1] == 0;
        place(s, keys[i], at(col, row), digit ? 13 : (keys[i].text[0] & 0x80 ? 13 : 9));
    }
    place(s, {55, Icon::None, "=", "=", "Equals", Face::Operator}, at(4, 4, 1, 2), 15);
    place(s, {40, Icon::None, "0", "0", "0"}, at(0, 5, 2), 13);
    place(s, {50, Icon::None, ".", ".", "Decimal point"}, at(2, 5), 13);
    place(s, {51, Icon::None, "+", "+", "Add", Face::Operator}, at(3, 5), 15);

    const int cx = 252;
    caption(p, QRectF(cx, 112, 150, 12), QStringLiteral("CONVERSIONS"), Qt::AlignLeft, 7);
    s.list(5, QRect(cx + 2, 128, 148, 142), kText, kListBack, 8, kListFont,
           QStringLiteral("Pick a conversion"),
           {QStringLiteral("Inches to centimetres"), QStringLiteral("Miles to kilometres"),
            QStringLiteral("Pounds to kilograms"), QStringLiteral("Celsius to Fahrenheit"),
            QStringLiteral("Gallons to litres"), QStringLiteral("Knots to km/h")});
    place(s, {67, Icon::Right, "", "Convert (&>)", "Convert", Face::Operator},
          QRect(cx, 280, 48, 28));
    place(s, {68, Icon::Left, "", "Convert back (&<)", "Convert back", Face::Operator},
          QRect(cx + 51, 280, 48, 28));
    place(s, {69, Icon::Open, "", "Load con&version file", "Load a conversion file"},
          QRect(cx + 102, 280, 50, 28));
    return skin;
}

std::unique_ptr<Skin> notepadSkin()
{
    const QSize size(520, 420);
    auto skin = std::make_unique<Skin>(
        QStringLiteral("notepad.skin"), QStringLiteral("notepad"), QStringLiteral("NOTEPAD"),
        QStringLiteral("Velto Slate Notepad"), size, crestOutline(size, 186, 334, 10, 22, 22, 36),
        Outline::TransparentColour);
    Skin &s = *skin;
    s.note(QStringLiteral("A quiet page for notes: open, save, clear and print."));
    QPainter &p = s.p();
    logo(s, QRectF(186, 1, 148, 20), QStringLiteral("NOTEPAD"));
    modeStrip(s, QPoint(20, 15), 3);
    windowButtons(s, 502, 14);

    s.list(2, QRect(20, 46, 480, 330), kText, kListBack, 10, QStringLiteral("DejaVu Sans Mono"),
           QStringLiteral("~"),
           {QStringLiteral("Shopping"), QStringLiteral("- coffee beans"),
            QStringLiteral("- new strings for the guitar"), QStringLiteral(""),
            QStringLiteral("Call the studio about Thursday.")},
           false);
    const Key keys[] = {{76, Icon::Open, "OPEN", "&Load a text file", "Open a text file"},
                        {77, Icon::Save, "SAVE", "&Save", "Save as a text file"},
                        {78, Icon::Clear, "CLEAR", "Cl&ear", "Clear the page"},
                        {79, Icon::Print, "PRINT", "&Print", "Print the page"}};
    for (int i = 0; i < 4; ++i) {
        Key k = keys[i];
        k.face = Face::Pill;
        place(s, k, QRect(18 + i * 92, 388, 86, 22), 7);
    }
    caption(p, QRectF(404, 393, 40, 12), QStringLiteral("TIME"), Qt::AlignLeft, 7);
    s.label(3, QRect(436, 390, 66, 16), kAmber, 8, QStringLiteral("DejaVu Sans Mono:B"),
            QStringLiteral("Clock"), QStringLiteral("10:42"));
    return skin;
}

std::unique_ptr<Skin> clockSkin()
{
    const QSize size(440, 218);
    auto skin = std::make_unique<Skin>(QStringLiteral("clock.skin"), QStringLiteral("clock"),
                                       QStringLiteral("CLOCK"), QStringLiteral("Velto Slate Clock"),
                                       size, crestOutline(size, 160, 286, 10, 40, 40, 40),
                                       Outline::TransparentColour, 620);
    Skin &s = *skin;
    s.note(QStringLiteral("Time and date at a glance, ten stopwatches and the snooze countdown."));
    QPainter &p = s.p();
    SegStyle amber;
    amber.skew = 0.07;
    const Sheet huge = s.digitSheet(36, 62, 14, amber);
    // The stopwatch shows tenths as text, "h:mm:ss.t", which a digit sheet
    // would draw with its leading zeros blank; a letter sheet keeps them.
    const Sheet stopwatch = s.segmentLetterSheet(14, 28, makeFont(kMono, 20, true), amber);

    logo(s, QRectF(160, 1, 126, 20), QStringLiteral("CLOCK"));
    modeStrip(s, QPoint(34, 16), 4);
    windowButtons(s, 408, 15);

    s.well(QRect(20, 46, 250, 120), 9, kGlass);
    caption(p, QRectF(32, 51, 60, 10), QStringLiteral("TIME"), Qt::AlignLeft, 7);
    s.digits(3, QPoint(32, 64), huge, 2, QStringLiteral("Clock"), QStringLiteral("10:42"));
    s.label(9, QRect(204, 100, 50, 24), kAmber, 16, QStringLiteral("DejaVu Sans Mono:B"),
            QStringLiteral("~"), QStringLiteral("37"));
    s.label(14, QRect(32, 138, 40, 18), kCyan, 10, kLabelBold, QStringLiteral("Day"),
            QStringLiteral("Sun"));
    s.label(21, QRect(76, 138, 120, 18), kText, 10, kLabelBold, QStringLiteral("Date"),
            QStringLiteral("Nov 23"));
    s.light(20, QRect(236, 52, 6, 6), kCyan, 1, QStringLiteral("24-hour clock"));
    caption(p, QRectF(245, 49, 24, 12), QStringLiteral("24H"), Qt::AlignLeft, 7);

    s.well(QRect(284, 46, 138, 120), 9, kGlass);
    s.light(21, QRect(295, 53, 6, 6), kGreen, 1, QStringLiteral("Stopwatch running"));
    caption(p, QRectF(305, 50, 80, 12), QStringLiteral("STOPWATCH"), Qt::AlignLeft, 7);
    s.label(28, QRect(380, 47, 36, 14), kCyan, 8, kLabelBold, QStringLiteral("Stopwatch number"),
            QStringLiteral("3"));
    s.digits(6, QPoint(290, 82), stopwatch, 9, QStringLiteral("Stopwatch"),
             QStringLiteral("0:12:09.4"));
    s.light(12, QRect(295, 139, 6, 6), kAmber, 1, QStringLiteral("Snooze"));
    caption(p, QRectF(305, 136, 60, 12), QStringLiteral("SNOOZE"), Qt::AlignLeft, 7);
    s.label(5, QRect(346, 134, 70, 16), kAmber, 8, kLabelBold, QStringLiteral("Snooze"),
            QStringLiteral("09"));

    caption(p, QRectF(34, 178, 40, 14), QStringLiteral("NOW"), Qt::AlignLeft, 7);
    s.label(3, QRect(62, 176, 60, 18), kText, 9, QStringLiteral("DejaVu Sans Mono:B"),
            QStringLiteral("Clock"), QStringLiteral("10:42"));
    s.light(11, QRect(130, 182, 6, 6), kCyan, 1, QStringLiteral("Automatic on and off"));
    caption(p, QRectF(140, 179, 40, 12), QStringLiteral("AUTO"), Qt::AlignLeft, 7);
    // Split is command 4, whose key is T on the player too.
    const Key keys[] = {{71, Icon::Left, "", "Previous stopwatch (&Z)", "Previous stopwatch"},
                        {70, Icon::Right, "", "Ne&xt stopwatch", "Next stopwatch"},
                        {72, Icon::StartStop, "", "&Start or stop", "Start or stop"},
                        {4, Icon::None, "SPLIT", "Spli&t",
                         "Split: hold the time shown while the stopwatch runs on"},
                        {74, Icon::Lap, "", "&Lap", "Lap: stop and start the next one"},
                        {73, Icon::Reset, "", "&Reset", "Reset this stopwatch"},
                        {75, Icon::None, "ALL", "Reset &all", "Reset all stopwatches", Face::Warm}};
    for (int i = 0; i < int(std::size(keys)); ++i)
        place(s, keys[i], QRect(178 + i * 35, 174, 32, 24), 7);
    return skin;
}

// A static dial: the frequency itself is on the display, so no needle that could lie.
void tuningScale(Skin &s, const QRect &r)
{
    QPainter &p = s.p();
    s.well(r, 5, kGlass);
    const qreal left = r.left() + 16, right = r.right() - 16;
    for (int f = 880; f <= 1080; f += 5) {
        const qreal x = left + (right - left) * (f - 880) / 200.0;
        const bool major = f % 40 == 0;
        const bool mid = f % 20 == 0;
        p.fillRect(QRectF(x - 0.5, r.top() + 4, 1, major ? 8 : (mid ? 6 : 3)),
                   major ? kCyan : mix(kGlass, kCaption, 0.6));
        if (major)
            caption(p, QRectF(x - 14, r.top() + 12, 28, 12), QString::number(f / 10),
                    Qt::AlignHCenter, 7, kCaption, 0.2);
    }
}

std::unique_ptr<Skin> fmSkin()
{
    const QSize size(460, 290);
    const QPolygon outline({QPoint(0, 30), QPoint(20, 10), QPoint(300, 10), QPoint(316, 0),
                            QPoint(444, 0), QPoint(460, 16), QPoint(460, 274), QPoint(444, 290),
                            QPoint(16, 290), QPoint(0, 274)});
    auto skin = std::make_unique<Skin>(
        QStringLiteral("fmtuner.skin"), QStringLiteral("fmtuner"), QStringLiteral("FMTUNER"),
        QStringLiteral("Velto Slate FM Tuner"), size, polygonPath(outline), Outline::Polygon);
    Skin &s = *skin;
    s.setPolygon(outline);
    s.note(QStringLiteral("FM tuner: scan, fine tune, ten preset keys and a station list."));
    QPainter &p = s.p();
    const Sheet big = s.digitSheet(24, 44, 10);
    const Sheet small = s.digitSheet(10, 17, 5);

    modeStrip(s, QPoint(28, 16), 5);
    logo(s, QRectF(200, 13, 96, 20), QStringLiteral("FM"));
    windowButtons(s, 440, 7);

    s.well(QRect(16, 42, 300, 98), 8, kGlass);
    caption(p, QRectF(28, 46, 80, 10), QStringLiteral("FREQUENCY"), Qt::AlignLeft, 7);
    s.digits(7, QPoint(28, 60), big, 3, QStringLiteral("Frequency"), QStringLiteral("101.5"));
    caption(p, QRectF(138, 92, 30, 12), QStringLiteral("MHz"), Qt::AlignLeft, 8, kAmber, 0.4);
    s.label(17, QRect(176, 58, 134, 18), kText, 10, kLabelBold, QStringLiteral("Station"),
            QStringLiteral("Coast FM"));
    s.label(16, QRect(176, 78, 134, 14), kCyan, 8, kLabelBold, QStringLiteral("Frequency"),
            QStringLiteral("101.5"));
    caption(p, QRectF(176, 98, 50, 10), QStringLiteral("PRESET"), Qt::AlignLeft, 7);
    s.digits(8, QPoint(226, 95), small, -3, QStringLiteral("Preset number"), QStringLiteral(" 04"));
    s.light(17, QRect(30, 118, 6, 6), kGreen, 1, QStringLiteral("Station found"));
    caption(p, QRectF(40, 115, 50, 12), QStringLiteral("TUNED"), Qt::AlignLeft, 7);
    s.light(16, QRect(86, 118, 6, 6), kGreen, 1, QStringLiteral("Stereo"));
    caption(p, QRectF(96, 115, 50, 12), QStringLiteral("STEREO"), Qt::AlignLeft, 7);
    s.label(15, QRect(150, 114, 160, 14), kAmber, 7, kLabelBold, QStringLiteral("Status"),
            QStringLiteral("Scanning..."));
    tuningScale(s, QRect(16, 148, 300, 28));

    s.list(6, QRect(332, 44, 112, 132), kText, kListBack, 8, kListFont, QStringLiteral("Presets"),
           {QStringLiteral("088.0 FM"), QStringLiteral("101.5 Coast FM"),
            QStringLiteral("104.2 Jazz"), QStringLiteral("106.8 News")});

    const Key row[] = {{80, Icon::ScanDown, "", "Scan &down", "Scan down"},
                       {82, Icon::Left, "", "Tune down (&<)", "Tune down"},
                       {83, Icon::Right, "", "Tune up (&>)", "Tune up"},
                       {81, Icon::ScanUp, "", "Scan &up", "Scan up"},
                       {89, Icon::Minus, "", "Fine step down (&-)", "Fine step down"},
                       {88, Icon::Plus, "", "Fine step up (&+)", "Fine step up"},
                       {84, Icon::Up, "", "Previous preset (&Z)", "Previous preset"},
                       {85, Icon::Down, "", "Ne&xt preset", "Next preset"}};
    for (int i = 0; i < 8; ++i)
        place(s, row[i], QRect(16 + i * 38, 188, 34, 26));
    for (int i = 0; i < 10; ++i) {
        static const char *digits[] = {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9"};
        const QString tip = QStringLiteral("Preset key %1").arg(i);
        ButtonArt art(QRect(16 + i * 30, 222, 26, 26), Face::Key, Icon::None,
                      QString::fromLatin1(digits[i]), 11);
        s.button(91 + i, art, QString::number(i), tip);
    }
    place(s, {86, Icon::None, "FREQ", "Show the f&requency", "Show the frequency"},
          QRect(330, 188, 55, 26), 7);
    place(s, {87, Icon::Mute, "", "Mu&te", "Mute"}, QRect(389, 188, 55, 26));
    place(s, {90, Icon::None, "STORE", "Stor&e the preset", "Store the preset", Face::Operator},
          QRect(330, 222, 114, 26), 7);
    s.entry(1, QRect(18, 258, 424, 18), kText, 8, kLabelFont, QStringLiteral("Station name"),
            QStringLiteral("STATION NAME"), Qt::AlignRight);
    return skin;
}

std::unique_ptr<Skin> webRadioSkin()
{
    const QSize size(460, 300);
    auto skin = std::make_unique<Skin>(
        QStringLiteral("webradio.skin"), QStringLiteral("webradio"), QStringLiteral("WEBRADIO"),
        QStringLiteral("Velto Slate Web Radio"), size, crestOutline(size, 158, 302, 10, 24, 24, 24),
        Outline::TransparentColour);
    Skin &s = *skin;
    s.note(QStringLiteral("Internet radio: a station list you edit, the stream's title and its "
                          "buffer."));
    QPainter &p = s.p();
    const Sheet big = s.digitSheet(16, 28, 7);
    const Sheet small = s.digitSheet(10, 17, 5);

    logo(s, QRectF(158, 1, 144, 20), QStringLiteral("WEB RADIO"));
    modeStrip(s, QPoint(20, 15), 6);
    windowButtons(s, 440, 14);

    s.well(QRect(16, 44, 428, 72), 8, kGlass);
    caption(p, QRectF(26, 48, 60, 10), QStringLiteral("ON AIR"), Qt::AlignLeft, 7);
    s.digits(9, QPoint(26, 62), big, 5, QStringLiteral("Listening time"),
             QStringLiteral(" 0:25:40"));
    s.label(17, QRect(150, 50, 286, 18), kText, 10, kLabelBold, QStringLiteral("Station"),
            QStringLiteral("Velvet Lounge Radio"));
    s.label(18, QRect(150, 70, 286, 14), kCyan, 8, kLabelFont, QStringLiteral("Now on air"),
            QStringLiteral("Amber Lines - Harbour Lights"));
    s.label(15, QRect(150, 94, 110, 14), kAmber, 7, kLabelBold, QStringLiteral("Status"),
            QStringLiteral("Playing"));
    s.label(19, QRect(262, 94, 80, 14), kCaption, 7, kLabelBold, QStringLiteral("Bandwidth"),
            QStringLiteral("128 kbps"));
    caption(p, QRectF(346, 96, 40, 12), QStringLiteral("BUFFER"), Qt::AlignLeft, 7);
    s.digits(10, QPoint(390, 93), small, -3, QStringLiteral("Buffer"), QStringLiteral("100"));
    caption(p, QRectF(422, 96, 14, 12), QStringLiteral("%"), Qt::AlignLeft, 7);

    s.list(8, QRect(18, 126, 300, 98), kText, kListBack, 9, kListFont,
           QStringLiteral("Stations: double-click to play"),
           {QStringLiteral("Coastline Classics"), QStringLiteral("Velvet Lounge Radio"),
            QStringLiteral("Night Owl Jazz"), QStringLiteral("Northern Lights FM")});
    s.entry(1, QRect(18, 234, 300, 18), kText, 8, kLabelFont, QStringLiteral("Station address"),
            QStringLiteral("STATION ADDRESS"), Qt::AlignRight);

    const Key side[] = {{145, Icon::Up, "UP", "Move &up", "Move up the list"},
                        {144, Icon::Down, "DOWN", "Move &down", "Move down the list"},
                        {142, Icon::Plus, "ADD", "&Add a station", "Add a station"},
                        {146, Icon::Edit, "EDIT", "&Edit the station", "Edit the station"},
                        {143, Icon::Clear, "DELETE", "Dele&te the station", "Delete the station"},
                        {29, Icon::Mixer, "MIXER", "&Volume mixer", "Volume mixer"}};
    for (int i = 0; i < 6; ++i) {
        Key k = side[i];
        k.face = Face::Pill;
        place(s, k, QRect(332, 124 + i * 22, 112, 19), 7);
    }

    const Key transport[] = {{140, Icon::Prev, "", "Previous station (&Z)", "Previous station"},
                             {147, Icon::Play, "", "&Play", "Play"},
                             {148, Icon::Stop, "", "&Stop", "Stop"},
                             {141, Icon::Next, "", "Ne&xt station", "Next station"}};
    for (int i = 0; i < 4; ++i) {
        ButtonArt art(QRect(16 + i * 39, 258, 34, 34), Face::Round, transport[i].icon);
        art.hot = transport[i].command == 147;
        s.button(transport[i].command, art, QString::fromLatin1(transport[i].name),
                 QString::fromLatin1(transport[i].tip));
    }
    s.plate(QRectF(180, 262, 140, 28), 7);
    caption(p, QRectF(188, 269, 30, 14), QStringLiteral("VOL"), Qt::AlignLeft, 7);
    s.slider(2, QRect(214, 269, 98, 14), 16, QStringLiteral("Volume"));
    return skin;
}

std::unique_ptr<Skin> browserSkin()
{
    const QSize size(640, 480);
    auto skin = std::make_unique<Skin>(
        QStringLiteral("browser.skin"), QStringLiteral("browser"), QStringLiteral("BROWSER"),
        QStringLiteral("Velto Slate Web Browser"), size,
        crestOutline(size, 250, 390, 10, 22, 22, 22), Outline::TransparentColour);
    Skin &s = *skin;
    s.note(QStringLiteral("A small browser: address field, visited addresses and search."));
    logo(s, QRectF(250, 1, 140, 20), QStringLiteral("BROWSER"));
    modeStrip(s, QPoint(20, 15), 7);
    windowButtons(s, 620, 14);

    const Key nav[] = {{103, Icon::Left, "", "Back (&<)", "Back"},
                       {104, Icon::Right, "", "Forward (&>)", "Forward"},
                       {105, Icon::Stop, "", "&Stop", "Stop"},
                       {102, Icon::Refresh, "", "&Refresh", "Refresh"},
                       {101, Icon::Home, "", "&Home", "Home page"}};
    for (int i = 0; i < 5; ++i) {
        ButtonArt art(QRect(16 + i * 28, 42, 26, 26), Face::Round, nav[i].icon);
        s.button(nav[i].command, art, QString::fromLatin1(nav[i].name),
                 QString::fromLatin1(nav[i].tip));
    }
    s.entry(1, QRect(162, 46, 312, 18), kText, 9, kLabelFont, QStringLiteral("Address"),
            QStringLiteral("ADDRESS"));
    s.list(7, QRect(486, 46, 108, 18), kText, kListBack, 8, kListFont,
           QStringLiteral("Visited addresses"), {QStringLiteral("velto.example")});
    place(s, {106, Icon::Find, "", "Search the web (&/)", "Search the web"},
          QRect(600, 42, 26, 26));

    const QRect page(18, 80, 604, 364);
    s.bezel(page, QString());
    s.area(3, page, QStringLiteral("~"));
    s.label(15, QRect(20, 454, 300, 14), kCaption, 7, kLabelFont, QStringLiteral("Status"),
            QStringLiteral("Done"));
    s.label(20, QRect(330, 454, 290, 14), kCyan, 7, kLabelBold, QStringLiteral("Page title"),
            QStringLiteral("Velto - start page"));
    s.showArea(page, QStringLiteral("C3"));
    return skin;
}

// The picture shown when an item has no cover: a disc with a note on it.
QImage noCover()
{
    QImage img(200, 200, QImage::Format_ARGB32_Premultiplied);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    QRadialGradient back(QPointF(100, 80), 150);
    back.setColorAt(0, kBodyTop);
    back.setColorAt(1, kEdge);
    p.fillRect(img.rect(), back);
    const QPointF c(100, 92);
    p.fillPath(circle(c + QPointF(0, 3), 70), QColor(0, 0, 0, 90));
    QConicalGradient sheen(c, 30);
    const QColor disc(0x2a, 0x33, 0x3c);
    sheen.setColorAt(0, disc);
    sheen.setColorAt(0.12, mix(disc, kCyan, 0.35));
    sheen.setColorAt(0.25, disc);
    sheen.setColorAt(0.5, disc.darker(130));
    sheen.setColorAt(0.62, mix(disc, kAmber, 0.25));
    sheen.setColorAt(0.75, disc);
    sheen.setColorAt(1, disc);
    QPainterPath ring = circle(c, 68);
    ring.addEllipse(c, 9, 9);
    ring.setFillRule(Qt::OddEvenFill);
    p.fillPath(ring, sheen);
    for (int r = 22; r < 68; r += 4)
        p.strokePath(circle(c, r), QPen(QColor(255, 255, 255, 10), 1));
    p.strokePath(circle(c, 68), QPen(QColor(255, 255, 255, 60), 1.2));
    p.strokePath(circle(c, 20), QPen(QColor(0, 0, 0, 90), 2));
    p.fillPath(circle(c, 20).subtracted(circle(c, 9)), QColor(0x14, 0x19, 0x1e, 220));
    p.strokePath(circle(c, 9), QPen(QColor(255, 255, 255, 50), 1));
    drawIcon(p, Icon::Note, QRectF(c.x() - 17, c.y() - 55, 34, 34), kCyan, true);
    caption(p, QRectF(0, 170, 200, 18), QStringLiteral("NO COVER"), Qt::AlignHCenter, 11, kCaption,
            3);
    return img;
}
// The hicolor theme's layout, which every desktop falls back to.
bool writeIcons(const QString &folder, QString *error)
{
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString dir = QStringLiteral("%1/hicolor/%2x%2/apps").arg(folder).arg(size);
        if (!QDir().mkpath(dir)) {
            *error = QStringLiteral("cannot create %1").arg(dir);
            return false;
        }
        if (!savePng(appIconImage(size), dir + QStringLiteral("/org.velto.Velto.png"), error))
            return false;
    }
    return true;
}

QString optionValue(const QStringList &args, const QString &name)
{
    const int at = args.indexOf(name);
    return at > 0 && at + 1 < args.size() ? args[at + 1] : QString();
}
} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        std::fprintf(stderr,
                     "usage: velto_skingen DATA-FOLDER [--preview FOLDER] [--icons FOLDER]\n");
        return 2;
    }
    const QString data = args[1];
    const QString previews = optionValue(args, QStringLiteral("--preview"));
    const QString icons = optionValue(args, QStringLiteral("--icons"));

    for (const QString &family : {kSans, kMono}) {
        if (QFontInfo(QFont(family)).family() != family)
            std::fprintf(stderr, "velto_skingen: font %s is missing; text will look different\n",
                         qPrintable(family));
    }

    const QString skinFolder = data + QStringLiteral("/skins");
    if (!QDir().mkpath(skinFolder) || (!previews.isEmpty() && !QDir().mkpath(previews))) {
        std::fprintf(stderr, "velto_skingen: cannot create the output folders\n");
        return 1;
    }
    const std::vector<std::function<std::unique_ptr<Skin>()>> makers = {
        playerSkin, karaokeSkin, calculatorSkin, notepadSkin,
        clockSkin,  fmSkin,      webRadioSkin,   browserSkin};
    // Previews come after every file is written: drawing them warms Qt's glyph
    // cache, which would otherwise nudge the antialiasing of later skins.
    QString error;
    std::vector<std::unique_ptr<Skin>> skins;
    for (const auto &make : makers) {
        skins.push_back(make());
        skins.back()->finish();
        if (!skins.back()->write(skinFolder, &error)) {
            std::fprintf(stderr, "velto_skingen: %s\n", qPrintable(error));
            return 1;
        }
    }
    const QImage cover = flatten(noCover(), kEdge, false);
    QSaveFile file(data + QStringLiteral("/nocover.bmp"));
    if (!file.open(QIODevice::WriteOnly) || !cover.save(&file, "BMP") || !file.commit()) {
        std::fprintf(stderr, "velto_skingen: cannot write nocover.bmp\n");
        return 1;
    }
    if (!icons.isEmpty() && !writeIcons(icons, &error)) {
        std::fprintf(stderr, "velto_skingen: %s\n", qPrintable(error));
        return 1;
    }
    if (previews.isEmpty())
        return 0;
    for (const auto &skin : skins) {
        const QString path = previews + QLatin1Char('/') + skin->stem() + QStringLiteral(".png");
        if (!savePng(skin->preview(), path, &error)) {
            std::fprintf(stderr, "velto_skingen: %s\n", qPrintable(error));
            return 1;
        }
    }
    savePng(cover, previews + QStringLiteral("/nocover.png"), &error);
    return 0;
}
