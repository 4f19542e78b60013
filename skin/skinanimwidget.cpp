#include "skinanimwidget.h"

#include "elementstyle.h"

#include <QPainter>

#include <algorithm>

namespace {

// Faster than a screen refreshes is only wasted work.
constexpr int ShortestFrameMs = 15;

} // namespace

SkinAnimWidget::SkinAnimWidget(int number, QWidget *parent)
    : QWidget(parent), m_number(number), m_timer(this)
{
    setFocusPolicy(Qt::NoFocus);
    hide();
    connect(&m_timer, &QTimer::timeout, this, &SkinAnimWidget::advance);
}

void SkinAnimWidget::configure(const SkinAnim &anim, const QImage &resource, int scale)
{
    m_anim = anim;
    m_resource = resource;
    m_frame = 0;
    setGeometry(scaledRect(anim.rect, scale));
    setToolTip(anim.toolTip);
    setAttribute(Qt::WA_TransparentForMouseEvents, anim.toolTip.isEmpty());
    m_timer.setInterval(std::max(int(anim.msPerFrame), ShortestFrameMs));
    updateTimer();
    update();
}

int SkinAnimWidget::frameCount() const
{
    return std::max(m_anim.frames, 1);
}

QRect SkinAnimWidget::frameRect(int frame) const
{
    const QSize size = m_anim.rect.size();
    const QPoint step = m_anim.direction == 1 ? QPoint(0, size.height()) : QPoint(size.width(), 0);
    return QRect(m_anim.face + step * frame, size);
}

void SkinAnimWidget::start()
{
    m_started = true;
    updateTimer();
}

void SkinAnimWidget::stop()
{
    m_started = false;
    updateTimer();
}

void SkinAnimWidget::advance()
{
    m_frame = (m_frame + 1) % frameCount();
    update();
}

void SkinAnimWidget::updateTimer()
{
    // A still picture (one frame, or no time per frame) needs no timer.
    const bool run = m_started && isVisible() && frameCount() > 1 && m_anim.msPerFrame > 0;
    if (run && !m_timer.isActive())
        m_timer.start();
    else if (!run)
        m_timer.stop();
}

void SkinAnimWidget::paintEvent(QPaintEvent *)
{
    if (m_resource.isNull())
        return;
    QPainter p(this);
    p.setRenderHint(QPainter::SmoothPixmapTransform, false);
    p.drawImage(rect(), m_resource, frameRect(m_frame));
}

void SkinAnimWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    updateTimer();
}

void SkinAnimWidget::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    updateTimer();
}
