#include "skin/lights.h"

#include <QImage>
#include <gtest/gtest.h>
#include <vector>

TEST(DrawLight, FillsItsShapeInsideTheRectangleOnly)
{
    // A 20x12 light at (5, 5): right edge x 24, bottom y 16, middle row 11.
    const QRect rect(5, 5, 20, 12);
    const QPoint centre(15, 11), topLeft(5, 5), topRight(24, 5), nearTopLeft(6, 6),
        nearTopRight(23, 6), leftMiddle(7, 11), rightMiddle(22, 11), topMiddle(15, 5);
    const std::tuple<int, std::vector<QPoint>, std::vector<QPoint>> cases[] = {
        {0, {centre, topLeft, topRight}, {}},
        {9, {centre, topLeft, topRight}, {}},
        {1, {centre, leftMiddle, rightMiddle, topMiddle}, {topLeft, topRight}},
        {2, {centre, topMiddle, nearTopLeft, nearTopRight}, {topLeft, topRight}},
        {3, {centre, nearTopLeft, QPoint(20, 11)}, {topRight, nearTopRight}},
        {4, {centre, nearTopRight, QPoint(9, 11)}, {topLeft, nearTopLeft}},
    };
    for (const auto &[shape, filled, empty] : cases) {
        QImage img(40, 30, QImage::Format_ARGB32_Premultiplied);
        img.fill(Qt::transparent);
        drawLight(img, rect, QColor(255, 0, 128), shape);
        for (const QPoint &p : filled) {
            const QRgb px = img.pixel(p);
            EXPECT_TRUE(qAlpha(px) > 200 && qRed(px) > 240 && qGreen(px) < 10)
                << "shape " << shape << " at " << p.x() << "," << p.y();
        }
        for (const QPoint &p : empty)
            EXPECT_LT(qAlpha(img.pixel(p)), 60)
                << "shape " << shape << " at " << p.x() << "," << p.y();
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                if (!rect.contains(x, y)) {
                    ASSERT_EQ(qAlpha(img.pixel(x, y)), 0) << "shape " << shape << " spilled";
                }
    }

    QImage indexed(10, 10, QImage::Format_Indexed8);
    drawLight(indexed, QRect(1, 1, 5, 5), Qt::red, 0); // nothing to paint on; no crash
    QImage none;
    drawLight(none, QRect(1, 1, 5, 5), Qt::red, 1);
}
