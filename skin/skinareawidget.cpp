#include "skinareawidget.h"

#include <QMouseEvent>
#include <QPainter>

SkinAreaWidget::SkinAreaWidget(int number, QWidget *parent) : QWidget(parent), m_number(number)
{
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void SkinAreaWidget::place(const QRect &geometry, const QString &toolTip, bool takesClicks)
{
    setGeometry(geometry);
    setToolTip(toolTip);
    setAccessibleName(toolTip);
    setAttribute(Qt::WA_TransparentForMouseEvents, !takesClicks && toolTip.isEmpty());
}

void SkinAreaWidget::setPicture(const QImage &picture)
{
    m_picture = picture;
    m_scaled = QPixmap();
    update();
}

void SkinAreaWidget::setContent(QWidget *content)
{
    if (m_content == content)
        return;
    if (m_content && m_content->parent() == this)
        m_content->hide();
    m_content = content;
    if (content) {
        content->setParent(this);
        content->setGeometry(rect());
        content->show();
    }
}

void SkinAreaWidget::paintEvent(QPaintEvent *)
{
    if (m_picture.isNull())
        return;
    if (m_scaled.size() != size())
        // Covers are photographs of any size: smoothing suits them.
        m_scaled = QPixmap::fromImage(
            m_picture.scaled(size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    QPainter(this).drawPixmap(0, 0, m_scaled);
}

void SkinAreaWidget::resizeEvent(QResizeEvent *event)
{
    if (m_content)
        m_content->setGeometry(rect());
    QWidget::resizeEvent(event);
}

void SkinAreaWidget::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return event->ignore();
    emit doubleClicked(m_number);
}
