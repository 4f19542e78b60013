#pragma once

#include <QColor>
#include <QDir>
#include <QImage>
#include <QRegion>
#include <QString>

#include <string>

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

// folder/main.png (120x80, a magenta corner from 110,70 for cut-out tests) and
// folder/res.png (128x64) drawn with the pixels above.
inline void saveTestPictures(const QString &folder)
{
    QImage main(120, 80, QImage::Format_RGB32);
    for (int y = 0; y < main.height(); ++y)
        for (int x = 0; x < main.width(); ++x)
            main.setPixel(x, y, x >= 110 && y >= 70 ? qRgb(255, 0, 255) : mainPixel(x, y));
    QImage resource(128, 64, QImage::Format_RGB32);
    for (int y = 0; y < resource.height(); ++y)
        for (int x = 0; x < resource.width(); ++x)
            resource.setPixel(x, y, resourcePixel(x, y));
    QDir().mkpath(folder);
    main.save(folder + QStringLiteral("/main.png"));
    resource.save(folder + QStringLiteral("/res.png"));
}

inline std::string describe(const QRegion &region)
{
    std::string s;
    for (const QRect &r : region)
        s += " (" + std::to_string(r.x()) + "," + std::to_string(r.y()) + " " +
             std::to_string(r.width()) + "x" + std::to_string(r.height()) + ")";
    return s.empty() ? " empty" : s;
}
