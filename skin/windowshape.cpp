#include "skin/windowshape.h"

#include <QImage>
#include <QWidget>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace {

// Turns rows of spans into the banded rectangles QRegion keeps internally: rows with the
// same spans merge into one band, so setRects gets the same list that QRegion's own
// operations would produce. Building a region this way is linear; subtracting rectangle by
// rectangle is quadratic (half a second for a 1600x1200 skin).
// One builder at a time: they share the rectangle list.
class BandBuilder
{
public:
    BandBuilder() { scratch().clear(); }

    // spans holds sorted [begin, end) pairs that neither overlap nor touch; it is consumed.
    void addRow(int y, std::vector<int> &spans)
    {
        if (m_height > 0 && y == m_top + m_height && spans == m_band) {
            ++m_height;
            return;
        }
        flush();
        std::swap(m_band, spans);
        m_top = y;
        m_height = 1;
    }

    QRegion region()
    {
        flush();
        std::vector<QRect> &rects = scratch();
        QRegion result;
        if (!rects.empty() && rects.size() <= size_t(std::numeric_limits<int>::max()))
            result.setRects(rects.data(), int(rects.size()));
        if (rects.capacity() > kKeptRects)
            std::vector<QRect>().swap(rects);
        return result;
    }

private:
    // The list is kept between calls (up to 1 MiB): growing a fresh one page by page cost
    // three to four times as much as scanning a 1600x1200 picture.
    static constexpr size_t kKeptRects = 65536;
    static std::vector<QRect> &scratch()
    {
        static thread_local std::vector<QRect> rects;
        return rects;
    }

    void flush()
    {
        std::vector<QRect> &rects = scratch();
        for (size_t i = 0; i + 1 < m_band.size(); i += 2)
            rects.emplace_back(m_band[i], m_top, m_band[i + 1] - m_band[i], m_height);
        m_band.clear();
        m_height = 0;
    }

    std::vector<int> m_band;
    int m_top = 0;
    int m_height = 0;
};

quint32 skinColour(QRgb pixel)
{
    return quint32(qRed(pixel)) + 256u * quint32(qGreen(pixel)) + 65536u * quint32(qBlue(pixel));
}

constexpr quint32 kLargestColour = 0xFFFFFF;

// The colour value as the low 24 bits of a QRgb: the skin puts red in the low byte,
// QRgb puts blue there.
QRgb rgbOf(quint32 colour)
{
    return qRgb(int(colour & 0xFF), int((colour >> 8) & 0xFF), int((colour >> 16) & 0xFF)) &
           0xFFFFFF;
}

__extension__ typedef __int128 Wide;

struct Edge
{
    qint64 upperX;
    qint64 upperY;
    qint64 dx;
    qint64 dy; // > 0
    qint64 firstRow;
    qint64 endRow; // exclusive
    int direction;
};

struct Crossing
{
    qint64 x;
    int direction;
    bool operator<(const Crossing &o) const { return x < o.x; }
};

// An edge owns the rows from its upper end up to, not including, its lower end, and in each
// row the first pixel at or right of where it crosses the row's top. That is the rule X11 and
// QRegion(QPolygon) fill by, so both agree pixel for pixel.
qint64 crossingAt(const Edge &e, qint64 row)
{
    const Wide along = Wide(row - e.upperY) * e.dx;
    Wide step = along / e.dy;
    if (along % e.dy > 0)
        ++step;
    return qint64(e.upperX + step);
}

void addOutline(std::vector<Edge> &edges, const QPoint *points, qsizetype count, qint64 top,
                qint64 bottom)
{
    for (qsizetype i = 0; i < count; ++i) {
        const QPoint a = points[i];
        const QPoint b = points[(i + 1) % count];
        if (a.y() == b.y())
            continue;
        const bool down = a.y() < b.y();
        const QPoint upper = down ? a : b;
        const QPoint lower = down ? b : a;
        Edge e{upper.x(),
               upper.y(),
               qint64(lower.x()) - upper.x(),
               qint64(lower.y()) - upper.y(),
               std::max<qint64>(upper.y(), top),
               std::min<qint64>(lower.y(), bottom),
               down ? 1 : -1};
        if (e.firstRow < e.endRow)
            edges.push_back(e);
    }
}

// Our own scan instead of QRegion(QPolygon): Qt's grows quadratically with the rows
// (0.9 s for a wedge 8000 rows tall, 14 s at 32767), and this one walks only the rows inside
// the bounds, so far-away points cost no more than an outline that fits the window.
QRegion scanEdges(std::vector<Edge> &edges, const QRect &bounds, bool oddEven)
{
    if (edges.empty() || bounds.isEmpty())
        return {};
    std::sort(edges.begin(), edges.end(),
              [](const Edge &a, const Edge &b) { return a.firstRow < b.firstRow; });
    qint64 endRow = std::numeric_limits<qint64>::min();
    for (const Edge &e : edges)
        endRow = std::max(endRow, e.endRow);
    const qint64 left = bounds.left();
    const qint64 right = qint64(bounds.right()) + 1;

    BandBuilder bands;
    std::vector<const Edge *> active;
    std::vector<Crossing> crossings;
    std::vector<int> spans;
    size_t next = 0;
    for (qint64 row = edges.front().firstRow; row < endRow; ++row) {
        while (next < edges.size() && edges[next].firstRow <= row)
            active.push_back(&edges[next++]);
        std::erase_if(active, [row](const Edge *e) { return e->endRow <= row; });

        crossings.clear();
        for (const Edge *e : active)
            crossings.push_back({std::clamp(crossingAt(*e, row), left, right), e->direction});
        std::sort(crossings.begin(), crossings.end());

        spans.clear();
        int winding = 0;
        bool inside = false;
        qint64 start = 0;
        for (size_t i = 0; i < crossings.size();) {
            const qint64 x = crossings[i].x;
            for (; i < crossings.size() && crossings[i].x == x; ++i)
                winding += oddEven ? 1 : crossings[i].direction;
            const bool now = oddEven ? (winding & 1) != 0 : winding != 0;
            if (now && !inside) {
                start = x;
            } else if (!now && inside && x > start) {
                spans.push_back(int(start));
                spans.push_back(int(x));
            }
            inside = now;
        }
        bands.addRow(int(row), spans);
    }
    return bands.region();
}

} // namespace

QRegion RegionFromBitmap(const QImage &picture, quint32 colour)
{
    if (picture.isNull())
        return {};
    if (colour > kLargestColour)
        return QRegion(picture.rect());
    const bool direct =
        picture.format() == QImage::Format_RGB32 || picture.format() == QImage::Format_ARGB32;
    const QImage image = direct ? picture : picture.convertToFormat(QImage::Format_ARGB32);
    if (image.isNull())
        return {};

    const QRgb key = rgbOf(colour);
    const int width = image.width();
    BandBuilder bands;
    std::vector<int> spans;
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        spans.clear();
        int x = 0;
        while (x < width) {
            while (x < width && (line[x] & 0xFFFFFF) == key)
                ++x;
            if (x == width)
                break;
            spans.push_back(x);
            while (x < width && (line[x] & 0xFFFFFF) != key)
                ++x;
            spans.push_back(x);
        }
        bands.addRow(y, spans);
    }
    return bands.region();
}

QRegion regionFromBitmapByRuns(const QImage &picture, quint32 colour)
{
    const int width = picture.width();
    const int height = picture.height();
    // Reads outside the bitmap stand for the platform's invalid colour, which no skin uses.
    const auto matches = [&](int x, int y) {
        return x < width && y < height && skinColour(picture.pixel(x, y)) == colour;
    };
    QRegion region(0, 0, width, height);
    for (int y = 0; y <= height; ++y) {
        int x = 0;
        while (x <= width) {
            while (!matches(x, y) && x <= width)
                ++x;
            const int start = x;
            while (matches(x, y) && x <= width)
                ++x;
            if (start < x)
                region -= QRect(start, y, x - start, 1);
            ++x;
        }
    }
    return region;
}

// The single outline and the several-outline form must fill by different rules. Winding is
// what someone drawing one outline expects: a loop where the line crosses itself still
// closes, instead of leaving a hole. Several outlines use odd-even so that one drawn inside
// another cuts a hole.
QRegion polygonRegion(const QList<QPoint> &points, const QRect &bounds)
{
    const QRect clip = bounds.intersected(kLargestWindow);
    std::vector<Edge> edges;
    addOutline(edges, points.constData(), points.size(), clip.top(), qint64(clip.bottom()) + 1);
    return scanEdges(edges, clip, false);
}

QRegion multiPolygonRegion(const QList<QPoint> &points, const QList<qint32> &counts,
                           const QRect &bounds)
{
    const QRect clip = bounds.intersected(kLargestWindow);
    std::vector<Edge> edges;
    qsizetype used = 0;
    for (const qint32 count : counts) {
        if (count <= 0 || count > points.size() - used)
            break;
        addOutline(edges, points.constData() + used, count, clip.top(), qint64(clip.bottom()) + 1);
        used += count;
    }
    return scanEdges(edges, clip, true);
}

QRegion scaledRegion(const QRegion &region, int factor)
{
    if (factor <= 1 || region.isEmpty())
        return region;
    // Keeps every scaled coordinate, and the width QRect derives from it, inside an int.
    const int limit = (1 << 29) / factor;
    const QRegion fitting = region.intersected(QRect(-limit, -limit, 2 * limit, 2 * limit));
    std::vector<QRect> rects;
    rects.reserve(size_t(fitting.rectCount()));
    for (const QRect &r : fitting)
        rects.emplace_back(r.x() * factor, r.y() * factor, r.width() * factor, r.height() * factor);
    QRegion scaled;
    if (!rects.empty())
        scaled.setRects(rects.data(), int(rects.size()));
    return scaled;
}

void setWindowShape(QWidget &window, const QRegion &region, int scale)
{
    // A skin that cuts away every pixel would leave a window nobody can see, move or close;
    // it stays rectangular instead.
    if (region.isEmpty()) {
        clearShape(window);
        return;
    }
    window.setMask(scaledRegion(region, scale));
}

void clearShape(QWidget &window)
{
    window.clearMask();
}
