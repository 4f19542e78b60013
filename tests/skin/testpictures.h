#pragma once

#include <QColor>

// Every resource pixel differs from its neighbours, so a face taken one pixel
// off shows; the main picture uses colours the resource never has.
inline QRgb resourcePixel(int x, int y)
{
    return qRgb((x * 2) & 0xFF, (y * 4) & 0xFF, 200);
}

inline QRgb mainPixel(int x, int y)
{
    return qRgb(90, 90 + (x + y) % 8, 40);
}
