#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

// A monitor as snapping sees it: its work area (the screen less panels) and
// its real dots per inch.
struct SnapScreen
{
    QRect workArea;
    qreal dpi = 96;
};

// 240 twips in pixels at dpi: 16 at 96 dpi, 32 at 192.
qreal snapDistance(qreal dpi);

// Where a window dropped at frame settles: each edge strictly closer than
// the snap distance to the matching edge of workArea moves onto it. When an
// edge pair both qualify, right wins over left and bottom over top.
QPoint SnapWindow(const QRect &frame, const QRect &workArea, qreal dpi);

// The same against the screen the window is on: the one it overlaps most.
// A window on no screen stays where it is.
QPoint SnapWindow(const QRect &frame, const QList<SnapScreen> &screens);
