#include "snap.h"

#include <cmath>

namespace {

bool near(qint64 a, qint64 b, qreal distance)
{
    return std::abs(qreal(a) - qreal(b)) < distance;
}

} // namespace

qreal snapDistance(qreal dpi)
{
    // A screen that reports no sensible density is taken as the usual 96.
    if (!(dpi > 0) || !std::isfinite(dpi))
        dpi = 96;
    return 240.0 * dpi / 1440.0;
}

QPoint SnapWindow(const QRect &frame, const QRect &workArea, qreal dpi)
{
    const qreal d = snapDistance(dpi);
    // Exclusive right and bottom edges: a window flush with the work area's
    // edge ends exactly where the area ends.
    const qint64 areaRight = qint64(workArea.x()) + workArea.width();
    const qint64 areaBottom = qint64(workArea.y()) + workArea.height();
    qint64 x = frame.x();
    qint64 y = frame.y();
    if (near(y, workArea.y(), d))
        y = workArea.y();
    if (near(x, workArea.x(), d))
        x = workArea.x();
    if (near(qint64(frame.x()) + frame.width(), areaRight, d))
        x = areaRight - frame.width();
    if (near(qint64(frame.y()) + frame.height(), areaBottom, d))
        y = areaBottom - frame.height();
    return {int(x), int(y)};
}

QPoint SnapWindow(const QRect &frame, const QList<SnapScreen> &screens)
{
    const SnapScreen *on = nullptr;
    qint64 best = 0;
    for (const SnapScreen &s : screens) {
        const QRect seen = s.workArea.intersected(frame);
        const qint64 area = qint64(seen.width()) * seen.height();
        if (!seen.isEmpty() && area > best) {
            best = area;
            on = &s;
        }
    }
    return on ? SnapWindow(frame, on->workArea, on->dpi) : frame.topLeft();
}
