#include "skinclickable.h"

#include <QMouseEvent>

void SkinClickable::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_down = true;
    emit pressed(m_index);
}

void SkinClickable::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_down) {
        event->ignore();
        return;
    }
    emit dragged(m_index, rect().contains(event->position().toPoint()));
}

void SkinClickable::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_down) {
        event->ignore();
        return;
    }
    m_down = false;
    // Whatever the release runs (a new skin, say) may move or reuse this widget.
    emit released(m_index, rect().contains(event->position().toPoint()));
}

void SkinClickable::click()
{
    if (m_down)
        return; // the mouse holds it
    emit pressed(m_index);
    emit released(m_index, true);
}

void SkinClickable::hideEvent(QHideEvent *event)
{
    // A widget hidden while held never sees its release.
    m_down = false;
    QWidget::hideEvent(event);
}
