#include "pressedoverlay.h"

#include <QPainter>

PressedOverlay::PressedOverlay(QWidget *parent) : SkinClickable(parent)
{
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void PressedOverlay::showFace(int index, const QImage &resource, const QRect &face,
                              const QRect &geometry, const QString &toolTip)
{
    setIndex(index);
    m_resource = resource;
    m_face = face;
    m_look = true;
    setGeometry(geometry);
    setToolTip(toolTip);
    raise();
    show();
    update();
}

void PressedOverlay::setPressedLook(bool on)
{
    if (m_look == on)
        return;
    m_look = on;
    update();
}

void PressedOverlay::paintEvent(QPaintEvent *)
{
    if (!m_look || m_resource.isNull() || m_face.isEmpty())
        return;
    QPainter p(this);
    // Whole-number scales stay sharp: no smoothing between picture pixels.
    p.setRenderHint(QPainter::SmoothPixmapTransform, false);
    p.drawImage(rect(), m_resource, m_face);
}

void PressedOverlay::leaveEvent(QEvent *event)
{
    emit left(index());
    SkinClickable::leaveEvent(event);
}
