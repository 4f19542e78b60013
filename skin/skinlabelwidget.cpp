#include "skinlabelwidget.h"

#include "elementstyle.h"
#include "skinaccessible.h"

#include <QPainter>

#include <utility>

SkinLabelWidget::SkinLabelWidget(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
}

void SkinLabelWidget::configure(const SkinLabel &label, int scale)
{
    m_number = label.number;
    m_colour = skinColourToQColor(label.foreColour);
    setGeometry(scaledRect(label.rect, scale));
    setFont(fontFromSkin(label.font, scale, logicalDpiY()));
    setToolTip(label.toolTip);
    // Without a tip a label is only paint: clicks reach what lies beneath it.
    setAttribute(Qt::WA_TransparentForMouseEvents, label.toolTip.isEmpty());
    update();
}

void SkinLabelWidget::setText(const QString &text)
{
    if (m_text == text)
        return;
    const QString before = std::exchange(m_text, text);
    update();
    announceTextChange(this, before, text);
}

void SkinLabelWidget::setAlignment(Qt::Alignment alignment)
{
    m_alignment = alignment;
    update();
}

void SkinLabelWidget::setOutlineStyle(int style)
{
    if (m_outline == style)
        return;
    m_outline = style;
    update();
}

void SkinLabelWidget::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    paintAuthorOutline(p, rect(), m_outline, OutlineKind::Label);
    if (m_text.isEmpty())
        return;
    p.setFont(font());
    p.setPen(m_colour);
    // One line, as the skin's rectangle was drawn for one.
    QString line = m_text;
    line.replace(QLatin1Char('\r'), QLatin1Char(' ')).replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QString shown = p.fontMetrics().elidedText(line, Qt::ElideRight, width());
    p.drawText(rect(), int(m_alignment) | Qt::TextSingleLine, shown);
}
