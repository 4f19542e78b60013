#include "frmalbum.h"

#include <QMouseEvent>
#include <QPainter>

frmAlbum::frmAlbum(QWidget *parent) : QWidget(parent, Qt::Window)
{
    setWindowTitle(QStringLiteral("Album Cover"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(48, 48);
    resize(300, 300);
}

void frmAlbum::setPicture(const QImage &picture, const QString &hint)
{
    m_picture = picture;
    setToolTip(hint);
    update();
}

QRect frmAlbum::fitted(const QSize &picture, const QRect &area)
{
    if (picture.isEmpty() || area.isEmpty())
        return {};
    const QSize size = picture.scaled(area.size(), Qt::KeepAspectRatio);
    return QRect(area.x() + (area.width() - size.width()) / 2,
                 area.y() + (area.height() - size.height()) / 2, size.width(), size.height());
}

void frmAlbum::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), QColor(16, 22, 27));
    if (m_picture.isNull())
        return;
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawImage(pictureRect(), m_picture);
}

void frmAlbum::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && !m_picture.isNull() &&
        pictureRect().contains(event->position().toPoint()))
        emit pictureDoubleClicked(m_picture);
}
