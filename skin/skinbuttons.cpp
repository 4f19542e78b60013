#include "skinbuttons.h"

#include "elementstyle.h"
#include "pressedoverlay.h"
#include "skinbuttonwidget.h"

#include <QCursor>
#include <QWidget>

SkinButtons::SkinButtons(QWidget &window) : m_window(window), m_overlay(new PressedOverlay(&window))
{
    connect(m_overlay, &SkinClickable::pressed, this, &SkinButtons::ButtonDown);
    connect(m_overlay, &SkinClickable::released, this, &SkinButtons::released);
    connect(m_overlay, &SkinClickable::dragged, this, &SkinButtons::dragged);
    connect(m_overlay, &PressedOverlay::left, this, &SkinButtons::endHover);
}

SkinButtons::~SkinButtons()
{
    for (QPointer<SkinButtonWidget> &button : m_pool)
        delete button.data();
    delete m_overlay.data();
}

SkinButtonWidget *SkinButtons::widget(int index)
{
    QPointer<SkinButtonWidget> &slot = m_pool[size_t(index)];
    if (!slot) {
        slot = new SkinButtonWidget(&m_window);
        slot->setOutlineStyle(m_outline);
        connect(slot, &SkinClickable::pressed, this, &SkinButtons::ButtonDown);
        connect(slot, &SkinClickable::released, this, &SkinButtons::released);
        connect(slot, &SkinClickable::dragged, this, &SkinButtons::dragged);
        connect(slot, &SkinButtonWidget::entered, this, &SkinButtons::hover);
        connect(slot, &SkinButtonWidget::left, this, &SkinButtons::endHover);
    }
    return slot;
}

void SkinButtons::place(const QList<SkinButton> &buttons, const QImage &resource, int hoverStyle,
                        int scale)
{
    m_overlay->hide();
    for (const QPointer<SkinButtonWidget> &button : m_pool)
        if (button)
            button->hide();
    m_count = 0;
    m_lastHover = 0;
    m_resource = resource;
    m_hoverStyle = hoverStyle;
    m_scale = scale;
    for (const SkinButton &b : buttons) {
        if (b.index < 1 || b.index > Count)
            continue;
        SkinButtonWidget *w = widget(b.index);
        w->configure(b, scale);
        w->raise();
        w->show();
        m_count = std::max(m_count, b.index);
    }
}

PressedOverlay &SkinButtons::overlay()
{
    return *m_overlay;
}

SkinButtonWidget *SkinButtons::button(int index) const
{
    if (index < 1 || index > m_count)
        return nullptr;
    SkinButtonWidget *w = m_pool[size_t(index)];
    return w && !w->isHidden() ? w : nullptr;
}

void SkinButtons::ButtonDown(int index)
{
    const SkinButtonWidget *w = button(index);
    if (!w)
        return;
    const SkinButton &b = w->button();
    // Not hidden first: the overlay may be the widget holding the mouse.
    m_overlay->showFace(index, m_resource, QRect(b.face, b.rect.size()), w->geometry(), b.toolTip);
}

void SkinButtons::ButtonUp(int index)
{
    m_overlay->hide();
    SkinButtonWidget *w = button(index);
    if (!w)
        return;
    w->setHoverBorder(false);
    // Last: the command may load another skin and reuse every button.
    emit command(w->button().command);
}

void SkinButtons::hover(int index)
{
    if (index == m_lastHover)
        return;
    if (m_hoverStyle == 1) {
        if (SkinButtonWidget *last = button(m_lastHover))
            last->setHoverBorder(false);
        if (SkinButtonWidget *now = button(index))
            now->setHoverBorder(true);
    } else if (m_hoverStyle == 2) {
        ButtonDown(index);
    }
    m_lastHover = index;
}

void SkinButtons::released(int index, bool inside)
{
    if (inside)
        return ButtonUp(index);
    // Let go away from the button: nothing runs.
    m_overlay->hide();
    m_lastHover = 0;
}

void SkinButtons::dragged(int index, bool inside)
{
    if (m_overlay->isVisible() && m_overlay->index() == index)
        m_overlay->setPressedLook(inside);
}

void SkinButtons::endHover(int index)
{
    if (index != m_lastHover)
        return;
    if (m_hoverStyle == 2) {
        if (m_overlay->isDown())
            return;
        const QPoint mouse = m_window.mapFromGlobal(QCursor::pos());
        if (m_overlay->isVisible()) {
            // The overlay shown over the button takes the mouse from it: no leave.
            if (m_overlay->geometry().contains(mouse))
                return;
            m_overlay->hide();
        } else if (const SkinButtonWidget *w = button(index); w && w->geometry().contains(mouse)) {
            // Released here: the button stays up until the mouse moves on.
            return;
        }
    } else if (SkinButtonWidget *w = button(index)) {
        w->setHoverBorder(false);
    }
    m_lastHover = 0;
}

void SkinButtons::setOutlineStyle(int style)
{
    m_outline = style;
    for (const QPointer<SkinButtonWidget> &button : m_pool)
        if (button)
            button->setOutlineStyle(style);
}
