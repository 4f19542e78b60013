#include "skin/windowshape.h"

#include "skinrig.h"

#include <QImage>
#include <QPolygon>
#include <QWidget>
#include <gtest/gtest.h>

#include <climits>
#include <random>

namespace {

::testing::AssertionResult sameRegion(const QRegion &actual, const QRegion &expected)
{
    if (actual.xored(expected).isEmpty())
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << "got" << describe(actual) << "\nwanted" << describe(expected);
}

// Red in the low byte: 0x302010 is red 0x10, green 0x20, blue 0x30.
constexpr quint32 kCut = 0x302010;
const QRgb kCutPixel = qRgb(0x10, 0x20, 0x30);

// '.' the cut colour, 'a' the cut colour at another alpha, 'b' the cut colour with red and
// blue swapped, anything else an unrelated colour.
QImage picture(const std::vector<const char *> &rows)
{
    QImage image(int(strlen(rows.at(0))), int(rows.size()), QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const char c = rows[size_t(y)][x];
            image.setPixel(x, y,
                           c == '.'   ? kCutPixel
                           : c == 'a' ? qRgba(0x10, 0x20, 0x30, 0x40)
                           : c == 'b' ? qRgb(0x30, 0x20, 0x10)
                                      : qRgb(200, 200, 200));
        }
    return image;
}

// Pixel by pixel: what the window keeps of a picture drawn with picture().
QRegion kept(const std::vector<const char *> &rows)
{
    QRegion region;
    for (int y = 0; y < int(rows.size()); ++y)
        for (int x = 0; rows[size_t(y)][x]; ++x)
            if (rows[size_t(y)][x] != '.' && rows[size_t(y)][x] != 'a')
                region += QRect(x, y, 1, 1);
    return region;
}

QImage randomPicture(std::mt19937 &random, int width, int height, int runs)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(qRgb(90, 140, 40));
    for (int i = 0; i < runs; ++i) {
        const int x = int(random() % unsigned(width));
        const int y = int(random() % unsigned(height));
        const int length = 1 + int(random() % 12u);
        const int alpha = (random() % 4u == 0) ? int(random() % 256u) : 255;
        const QRgb colour = (random() % 3u == 0) ? qRgb(0x30, 0x20, 0x10) : kCutPixel;
        for (int k = x; k < std::min(width, x + length); ++k)
            image.setPixel(k, y, (colour & 0xFFFFFF) | (QRgb(alpha) << 24));
    }
    return image;
}

} // namespace

TEST(RegionFromBitmap, KeepsExactlyThePixelsOfOtherColours)
{
    const std::tuple<const char *, std::vector<const char *>> cases[] = {
        {"no transparent pixel", {"###", "#b#"}},
        {"run reaching the right edge", {"##...", "#....", "....."}},
        {"holes in the middle", {"#####", "#..##", "#.#.#", "#####"}},
        {"whole bitmap transparent", {"...", "..."}},
        {"first column and last row", {".##", ".##", "..."}},
        {"alpha differs but RGB equal", {"#a.", "aa#", "a.a"}},
        {"rows alike merge, rows unlike split", {"#..#", "#..#", "#.##", "#..#"}},
    };
    for (const auto &[name, rows] : cases) {
        const QImage image = picture(rows);
        const QRegion fast = RegionFromBitmap(image, kCut);
        EXPECT_TRUE(sameRegion(fast, kept(rows))) << name;
        // Same rectangles as Qt's own operations make, so == and later operations work.
        EXPECT_EQ(fast.rectCount(), regionFromBitmapByRuns(image, kCut).rectCount()) << name;
    }
    EXPECT_TRUE(
        sameRegion(RegionFromBitmap(picture({"..", ".."}), kCut | 0x1000000), QRect(0, 0, 2, 2)));
}

TEST(RegionFromBitmap, AgreesWithRunByRunSubtractionOnRandomPicturesInAnyFormat)
{
    std::mt19937 random(20240611);
    for (int i = 0; i < 400; ++i) {
        const int width = 1 + int(random() % 24u);
        const int height = 1 + int(random() % 24u);
        const QImage image = randomPicture(random, width, height, int(random() % 60u));
        const QRegion fast = RegionFromBitmap(image, kCut);
        const QRegion reference = regionFromBitmapByRuns(image, kCut);
        ASSERT_TRUE(sameRegion(fast, reference)) << "picture " << i;
        ASSERT_EQ(fast.rectCount(), reference.rectCount()) << "picture " << i;
    }
    // Other formats are read as the pixels they show.
    const QImage source = randomPicture(random, 37, 23, 120);
    const QImage image = source.convertToFormat(QImage::Format_Indexed8);
    const QRgb p = image.pixel(0, 0);
    const quint32 colour = quint32(qRed(p) + 256 * qGreen(p) + 65536 * qBlue(p));
    EXPECT_TRUE(sameRegion(RegionFromBitmap(image, colour), regionFromBitmapByRuns(image, colour)));
}

// Qt's polygon regions leave the right and bottom edges out, fill one outline
// by winding and several by odd-even; the window shape must match them pixel
// for pixel.
TEST(PolygonRegion, OneOutlineFillsByWindingAsQtDoes)
{
    std::mt19937 random(99);
    for (int i = 0; i < 500; ++i) {
        QList<QPoint> one;
        for (int n = 3 + int(random() % 7u); n > 0; --n)
            one.append(QPoint(int(random() % 40u) - 5, int(random() % 40u) - 5));
        ASSERT_TRUE(sameRegion(polygonRegion(one), QRegion(QPolygon(one), Qt::WindingFill)))
            << "outline " << i;
    }
}

// Several outlines fill by odd-even, up to the first count that does not fit.
TEST(PolygonRegion, SeveralOutlinesFillByOddEvenUpToTheFirstCountThatDoesNotFit)
{
    const QList<QPoint> squares{{0, 0}, {4, 0}, {4, 4}, {0, 4}, {6, 0}, {9, 0}, {9, 4}, {6, 4}};
    const QList<QPoint> overlapping{{0, 0}, {4, 0}, {4, 4}, {0, 4}, {2, 2}, {6, 2}, {6, 6}, {2, 6}};
    // A five-pointed star wraps its centre twice: odd-even cuts it out.
    const QList<QPoint> star{{50, 0}, {79, 90}, {2, 35}, {98, 35}, {21, 90}};
    const QRegion first(0, 0, 4, 4);
    const QRegion both = first.united(QRegion(6, 0, 3, 4));
    // clang-format off
    const std::tuple<QList<QPoint>, QList<qint32>, QRegion> cases[] = {
        {squares, {4, 4}, both},        {squares, {4, 4, 4}, both}, {squares, {4}, first},
        {squares, {4, 5}, first},       {squares, {4, -1, 4}, first}, {squares, {0, 4}, {}},
        {squares, {INT_MAX}, {}},       {overlapping, {4, 4}, first.xored(QRegion(2, 2, 4, 4))},
        {star, {5}, QRegion(QPolygon(star), Qt::OddEvenFill)},
    };
    // clang-format on
    for (const auto &[points, counts, expected] : cases)
        EXPECT_TRUE(sameRegion(multiPolygonRegion(points, counts), expected))
            << "counts " << QDebug::toString(counts).toStdString();
}

TEST(ScaledRegion, EveryPixelBecomesAWholeBlock)
{
    const QRegion region = RegionFromBitmap(picture({"#..#", "#.##", "...."}), kCut);
    const int factor = 3;
    const QRegion scaled = scaledRegion(region, factor);
    for (int y = -1; y < 3 * factor + 1; ++y)
        for (int x = -1; x < 4 * factor + 1; ++x)
            ASSERT_EQ(scaled.contains(QPoint(x, y)),
                      region.contains(QPoint(x < 0 ? -1 : x / factor, y < 0 ? -1 : y / factor)))
                << x << "," << y;
    const QRegion far(QRect(INT_MAX - 10, 0, 10, 10));
    EXPECT_TRUE(scaledRegion(far, 4).isEmpty()) << "beyond any screen once scaled";
    EXPECT_FALSE(scaledRegion(QRegion(0, 0, 2, 2), INT_MAX).contains(QPoint(INT_MAX - 1, 0)));
}

TEST(SetWindowShape, ASkinCutAwayEntirelyLeavesTheWindowRectangular)
{
    QWidget window;
    window.resize(4, 3);
    setWindowShape(window, RegionFromBitmap(picture({"#..#", "#.##", "...."}), kCut));
    setWindowShape(window, RegionFromBitmap(picture({"....", "...."}), kCut));
    EXPECT_TRUE(window.mask().isEmpty());
}
