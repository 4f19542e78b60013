#include "skintextfield.h"

#include "elementstyle.h"

SkinTextField::SkinTextField(int number, QWidget *parent) : QLineEdit(parent), m_number(number)
{
    setFrame(false);
    hide();
}

void SkinTextField::configure(const SkinLabel &field, int scale)
{
    setGeometry(scaledRect(field.rect, scale));
    const QColor text = skinColourToQColor(field.foreColour);
    QPalette p = palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        p.setColor(group, QPalette::Base, Qt::transparent);
        p.setColor(group, QPalette::Text, text);
        p.setColor(group, QPalette::Highlight, text);
        p.setColor(group, QPalette::HighlightedText,
                   text.lightness() > 127 ? Qt::black : Qt::white);
        QColor hint = text;
        hint.setAlpha(120);
        p.setColor(group, QPalette::PlaceholderText, hint);
    }
    setPalette(p);
    setFont(fontFromSkin(field.font, scale, logicalDpiY()));
    setToolTip(field.toolTip);
    setAccessibleName(field.toolTip);
}
