#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QRegion>

class QImage;
class QWidget;

// X11 window coordinates are 16-bit, so no window can show anything beyond this.
inline constexpr QRect kLargestWindow{-32768, -32768, 65536, 65536};

// The picture's rectangle less every pixel whose red + 256 * green + 65536 * blue equals
// colour; alpha is ignored. An empty region when the picture cannot be read.
QRegion RegionFromBitmap(const QImage &picture, quint32 colour);

// The same region built by subtracting one rectangle per transparent run, as the skin format
// defines it. Hundreds of times slower than RegionFromBitmap; kept to check it against.
QRegion regionFromBitmapByRuns(const QImage &picture, quint32 colour);

// The pixels inside one outline, by the winding rule, clipped to bounds (and never beyond
// kLargestWindow). Pass the window's rectangle: the work grows with the rows inside bounds.
QRegion polygonRegion(const QList<QPoint> &points, const QRect &bounds = kLargestWindow);

// Several outlines taken together by the odd-even rule: counts[i] points each, in order.
// The list of outlines ends at the first count that is not positive or runs past the points.
QRegion multiPolygonRegion(const QList<QPoint> &points, const QList<qint32> &counts,
                           const QRect &bounds = kLargestWindow);

// Every pixel becomes factor x factor pixels (HiDPI). Factors below 1 leave the region as is.
QRegion scaledRegion(const QRegion &region, int factor);

// Cuts the window to region (in picture pixels). An empty region leaves it rectangular.
void setWindowShape(QWidget &window, const QRegion &region, int scale = 1);

// The window becomes a plain rectangle again; every skin load starts with this.
void clearShape(QWidget &window);
