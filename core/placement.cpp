#include "placement.h"

#include <algorithm>
#include <limits>

QPoint keepOnScreen(QPoint pos, QSize size, const QList<QRect> &workAreas)
{
    if (workAreas.isEmpty())
        return pos;
    const QRect window(pos, size.expandedTo(QSize(1, 1)));
    // Enough of the window to grab and drag it back.
    const int needW = std::min(window.width(), 32);
    const int needH = std::min(window.height(), 16);
    for (const QRect &area : workAreas) {
        const QRect seen = area.intersected(window);
        if (seen.width() >= needW && seen.height() >= needH)
            return pos;
    }
    const QRect *nearest = &workAreas.first();
    qint64 best = std::numeric_limits<qint64>::max();
    for (const QRect &area : workAreas) {
        const qint64 dx = qint64(area.center().x()) - window.center().x();
        const qint64 dy = qint64(area.center().y()) - window.center().y();
        if (dx * dx + dy * dy < best) {
            best = dx * dx + dy * dy;
            nearest = &area;
        }
    }
    const QRect &a = *nearest;
    const int x = std::clamp(pos.x(), a.left(), std::max(a.left(), a.right() + 1 - window.width()));
    const int y = std::clamp(pos.y(), a.top(), std::max(a.top(), a.bottom() + 1 - window.height()));
    return {x, y};
}
