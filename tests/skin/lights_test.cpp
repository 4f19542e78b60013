#include "skin/lights.h"

#include <QImage>
#include <gtest/gtest.h>

// How each shape is filled is QPainter's; here each lights its middle, leaves a
// corner bare unless it is the rectangle, and stays inside its rectangle.
TEST(DrawLight, FillsItsShapeInsideTheRectangleOnly)
{
    // A 20x12 light at (5, 5): right edge x 24, bottom y 16, middle (15, 11).
    const QRect rect(5, 5, 20, 12);
    for (const int shape : {0, 1, 2, 3, 4, 9}) {
        SCOPED_TRACE(shape);
        QImage img(40, 30, QImage::Format_ARGB32_Premultiplied);
        img.fill(Qt::transparent);
        drawLight(img, rect, QColor(255, 0, 128), shape);
        EXPECT_EQ(img.pixel(15, 11), qRgb(255, 0, 128));
        const QPoint corner = shape == 4 ? rect.topLeft() : rect.topRight();
        EXPECT_EQ(qAlpha(img.pixel(corner)) > 200, shape == 0 || shape == 9);
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x)
                if (!rect.contains(x, y)) {
                    ASSERT_EQ(qAlpha(img.pixel(x, y)), 0) << "spilled";
                }
    }
}
