#pragma once

#include "skin/skinloader.h"

#include "support/fakes.h"
#include "support/temphome.h"

#include <QDebug>
#include <QDir>
#include <QImage>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QRegion>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <string>
#include <vector>

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

inline std::string describe(const QRegion &region)
{
    return ' ' + QDebug::toString(region).toStdString();
}

// The main window as far as the skin is concerned: it paints through the loader
// and notes the mouse presses elements pass on.
class SkinWindow : public QWidget
{
public:
    SkinLoader *loader = nullptr;
    std::vector<Qt::MouseButton> presses;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter p(this);
        if (loader)
            loader->paint(p, event->rect());
    }
    void mousePressEvent(QMouseEvent *event) override { presses.push_back(event->button()); }
};

// A skin in a temporary folder, loaded onto a shown window.
struct SkinRig
{
    TempHome home;
    FakeDialogs dialogs;
    FakeClock clock;
    SkinWindow window;
    SkinLoader loader{window, dialogs, clock};
    std::vector<qint16> commands;

    explicit SkinRig(int scale = 1)
    {
        window.loader = &loader;
        loader.setScale(scale);
        QObject::connect(&loader, &SkinLoader::command,
                         [this](qint16 cmd) { commands.push_back(cmd); });
        // skin/main.png has a magenta corner from 110,70 for cut-out tests.
        QImage main(120, 80, QImage::Format_RGB32);
        for (int y = 0; y < main.height(); ++y)
            for (int x = 0; x < main.width(); ++x)
                main.setPixel(x, y, x >= 110 && y >= 70 ? qRgb(255, 0, 255) : mainPixel(x, y));
        QImage resource(128, 64, QImage::Format_RGB32);
        for (int y = 0; y < resource.height(); ++y)
            for (int x = 0; x < resource.width(); ++x)
                resource.setPixel(x, y, resourcePixel(x, y));
        QDir().mkpath(home.file(QStringLiteral("skin")));
        main.save(home.file(QStringLiteral("skin/main.png")));
        resource.save(home.file(QStringLiteral("skin/res.png")));
    }

    QString write(const QString &name, const QString &records, int hoverStyle = 0) const
    {
        const QString text = QStringLiteral("\"Velto Skin/PLAYER\",\"Test\"\n1,0\n"
                                            "\"Main\",\"main.png\"\n\"Resource\",\"res.png\"\n"
                                            "\"*\",\"\"\n") +
                             QString::number(hoverStyle) + QStringLiteral(",0,10,20,30,0,0,0\n") +
                             records + QStringLiteral("E\n");
        return home.write(QStringLiteral("skin/") + name, text.toUtf8());
    }

    bool load(const QString &records, int hoverStyle = 0)
    {
        const bool ok = loader.LoadSkin(write(QStringLiteral("test.skin"), records, hoverStyle));
        window.show();
        (void)QTest::qWaitForWindowExposed(&window);
        return ok;
    }

    QImage shot() { return window.grab().toImage().convertToFormat(QImage::Format_RGB32); }
};
