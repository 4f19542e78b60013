#include "skinsliderwidget.h"

#include "elementstyle.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

SkinSliderWidget::SkinSliderWidget(int number, QWidget *parent) : QWidget(parent), m_number(number)
{
    setFocusPolicy(Qt::NoFocus);
}

void SkinSliderWidget::configure(const SkinSlider &slider, const QImage &resource, int scale)
{
    m_slider = slider;
    m_resource = resource;
    m_scale = scale;
    m_dragging = false;
    setGeometry(scaledRect(slider.rect, scale));
    setToolTip(slider.toolTip);
    update();
}

int SkinSliderWidget::length() const
{
    return vertical() ? m_slider.rect.height() : m_slider.rect.width();
}

int SkinSliderWidget::knobLength() const
{
    return std::clamp(m_slider.knobLength, 0, length());
}

int SkinSliderWidget::travel() const
{
    return length() - knobLength();
}

int SkinSliderWidget::knobOffset() const
{
    const int along = int(std::lround(m_value * travel()));
    // Upright sliders grow upwards, like a mixer's faders.
    return vertical() ? travel() - along : along;
}

QRect SkinSliderWidget::knobRect() const
{
    const int at = knobOffset();
    const QRect picture = vertical() ? QRect(0, at, m_slider.rect.width(), knobLength())
                                     : QRect(at, 0, knobLength(), m_slider.rect.height());
    return scaledRect(picture, m_scale);
}

void SkinSliderWidget::setValue(double value)
{
    if (!std::isfinite(value))
        return;
    value = std::clamp(value, 0.0, 1.0);
    if (value == m_value)
        return;
    const QRect before = knobRect();
    const int heard = qRound(m_value * 100.0);
    m_value = value;
    // A reader hears whole percent; playback moves the position in far
    // smaller steps, ten times a second.
    if (QAccessible::isActive() && qRound(value * 100.0) != heard) {
        QAccessibleValueChangeEvent event(this, value * 100.0);
        QAccessible::updateAccessibility(&event);
    }
    // Playback moves the value every tick; most steps move no pixel.
    if (const QRect after = knobRect(); after != before)
        update(before | after);
}

void SkinSliderWidget::setValueAsUser(double value)
{
    if (m_dragging || !std::isfinite(value))
        return;
    userSet(value);
    emit dragFinished(m_number, m_value);
}

void SkinSliderWidget::userSet(double value)
{
    const double before = m_value;
    setValue(value);
    if (m_value != before)
        emit valueChanged(m_number, m_value);
}

int SkinSliderWidget::along(const QPoint &windowPos) const
{
    const int scale = std::max(m_scale, 1);
    return (vertical() ? windowPos.y() : windowPos.x()) / scale;
}

void SkinSliderWidget::dragTo(const QPoint &windowPos)
{
    if (travel() <= 0)
        return;
    const int offset = std::clamp(along(windowPos) - m_grab, 0, travel());
    const double fraction = double(offset) / travel();
    userSet(vertical() ? 1.0 - fraction : fraction);
}

void SkinSliderWidget::paintEvent(QPaintEvent *)
{
    if (m_resource.isNull() || knobLength() <= 0)
        return;
    const QRect source = vertical()
                             ? QRect(m_slider.face, QSize(m_slider.rect.width(), knobLength()))
                             : QRect(m_slider.face, QSize(knobLength(), m_slider.rect.height()));
    QPainter p(this);
    p.setRenderHint(QPainter::SmoothPixmapTransform, false);
    p.drawImage(knobRect(), m_resource, source);
}

void SkinSliderWidget::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || m_dragging) {
        event->ignore();
        return;
    }
    m_dragging = true;
    const int at = along(event->position().toPoint());
    const int knob = knobOffset();
    // Held by the knob, it keeps its place under the mouse; a press on the
    // track brings the knob's middle to the mouse.
    m_grab = at >= knob && at < knob + knobLength() ? at - knob : knobLength() / 2;
    dragTo(event->position().toPoint());
}

void SkinSliderWidget::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging) {
        event->ignore();
        return;
    }
    dragTo(event->position().toPoint());
}

void SkinSliderWidget::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_dragging) {
        event->ignore();
        return;
    }
    m_dragging = false;
    emit dragFinished(m_number, m_value);
}

void SkinSliderWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    if (m_number == 3 || m_number == 5)
        userSet(0.5);
}

void SkinSliderWidget::hideEvent(QHideEvent *event)
{
    m_dragging = false;
    QWidget::hideEvent(event);
}
