#include "screens.h"

#include <QGuiApplication>
#include <QScreen>

QList<QRect> QtScreens::workAreas() const
{
    QList<QRect> areas;
    for (const QScreen *screen : QGuiApplication::screens())
        areas << screen->availableGeometry();
    return areas;
}
