#include "skin/lights.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>

LightsView ShowLights(const PlayerSwitches &s)
{
    LightsView v;
    auto &on = v.visible;
    on[1] = false; // kept dark: skins use it as a frame or spare
    on[2] = s.playing && !s.paused;
    on[3] = s.paused;
    on[4] = !s.playing && !s.paused;
    on[5] = s.introScan;
    on[6] = s.stopAfterItem;
    on[7] = s.repeatItem;
    on[8] = s.shuffle;
    on[9] = s.continuousPlay;
    on[10] = s.muted;
    on[11] = s.scheduleAuto;
    on[12] = s.snooze;
    on[13] = s.abLoop;
    on[14] = s.lyrics;
    on[15] = !s.mediaMode;
    on[16] = s.fmStereo;
    on[17] = s.fmSignal;
    on[18] = s.ledSign;
    on[19] = s.onTop;
    on[20] = s.twentyFourHour;
    on[21] = s.stopwatchRunning;
    on[22] = s.mediaMode;
    v.label26 = s.mediaMode ? QStringLiteral("Media") : QStringLiteral("CD");
    return v;
}

void drawLight(QPainter &painter, const QRect &rect, const QColor &colour, int shape)
{
    if (rect.width() < 1 || rect.height() < 1)
        return;
    const QRectF r(rect);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    switch (shape) {
    case 1:
        painter.drawEllipse(r);
        break;
    case 2: {
        const qreal radius = std::min(r.width(), r.height()) / 4;
        painter.drawRoundedRect(r, radius, radius);
        break;
    }
    case 3: {
        const QPointF points[] = {r.topLeft(), QPointF(r.right(), r.center().y()), r.bottomLeft()};
        painter.drawPolygon(points, 3);
        break;
    }
    case 4: {
        const QPointF points[] = {r.topRight(), QPointF(r.left(), r.center().y()), r.bottomRight()};
        painter.drawPolygon(points, 3);
        break;
    }
    default:
        painter.drawRect(r);
        break;
    }
    painter.restore();
}
