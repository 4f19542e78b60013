#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

// Where a window of the given size placed at pos lands: unchanged while a useful
// part of it shows on some work area, otherwise moved onto the nearest one (a
// monitor was unplugged since the position was saved).
QPoint keepOnScreen(QPoint pos, QSize size, const QList<QRect> &workAreas);
