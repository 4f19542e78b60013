#include "skinbuttonwidget.h"

#include "elementstyle.h"

#include <QPainter>

namespace {

// Light enough to be seen on the dark skins most people draw.
const QColor HoverBorder(240, 240, 240);

} // namespace

SkinButtonWidget::SkinButtonWidget(QWidget *parent) : SkinClickable(parent)
{
    setFocusPolicy(Qt::NoFocus);
}

void SkinButtonWidget::configure(const SkinButton &button, int scale)
{
    m_button = button;
    m_border = false;
    setIndex(button.index);
    setGeometry(scaledRect(button.rect, scale));
    setToolTip(button.toolTip);
    update();
}

void SkinButtonWidget::setHoverBorder(bool on)
{
    if (m_border == on)
        return;
    m_border = on;
    update();
}

void SkinButtonWidget::setOutlineStyle(int style)
{
    if (m_outline == style)
        return;
    m_outline = style;
    update();
}

void SkinButtonWidget::paintEvent(QPaintEvent *)
{
    if (!m_border && m_outline != 1 && m_outline != 2)
        return;
    QPainter p(this);
    paintAuthorOutline(p, rect(), m_outline, OutlineKind::Button);
    if (m_border) {
        p.setPen(QPen(HoverBorder, 1));
        p.setBrush(Qt::NoBrush);
        p.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void SkinButtonWidget::enterEvent(QEnterEvent *event)
{
    emit entered(index());
    SkinClickable::enterEvent(event);
}

void SkinButtonWidget::leaveEvent(QEvent *event)
{
    emit left(index());
    SkinClickable::leaveEvent(event);
}
