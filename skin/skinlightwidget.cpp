#include "skinlightwidget.h"

#include "elementstyle.h"
#include "lights.h"

#include <QPainter>

SkinLightWidget::SkinLightWidget(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
}

void SkinLightWidget::configure(const SkinLight &light, int scale)
{
    m_light = light;
    m_scale = scale;
    setGeometry(scaledRect(light.rect, scale));
    setToolTip(light.toolTip);
    setAttribute(Qt::WA_TransparentForMouseEvents, light.toolTip.isEmpty());
    update();
}

void SkinLightWidget::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    // The shape is drawn at picture size and scaled, so it keeps the skin's proportions.
    p.scale(m_scale, m_scale);
    drawLight(p, QRect(QPoint(0, 0), m_light.rect.size()), skinColourToQColor(m_light.colour),
              m_light.shape);
}
