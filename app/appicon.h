#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

// Velto's icon: a slate disc ringed in cyan with a V. The tray draws it at run
// time and scripts/skingen writes it out for the desktop's icon theme, so the
// menu, the file manager and the tray show one picture.
inline QImage appIconImage(int size)
{
    const QColor slate(0x2b, 0x32, 0x3f);
    const QColor cyan(0x7f, 0xd8, 0xff);
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;
    const qreal ring = qMax(1.0, s / 16);
    p.setPen(QPen(cyan, ring));
    p.setBrush(slate);
    p.drawEllipse(QRectF(ring / 2, ring / 2, s - ring, s - ring));

    QPainterPath v;
    v.moveTo(s * 0.30, s * 0.30);
    v.lineTo(s * 0.50, s * 0.72);
    v.lineTo(s * 0.70, s * 0.30);
    p.setPen(QPen(cyan, qMax(1.5, s * 0.12), Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPath(v);
    return image;
}
