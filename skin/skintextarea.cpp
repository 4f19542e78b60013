#include "skintextarea.h"

#include "elementstyle.h"

SkinTextArea::SkinTextArea(QWidget *parent) : QPlainTextEdit(parent)
{
    setFrameShape(QFrame::NoFrame);
    hide();
}

void SkinTextArea::configure(const SkinList &list, int scale)
{
    setGeometry(scaledRect(list.rect, scale));
    applyAreaStyle(*this, list.foreColour, list.backColour, listFont(list, scale, logicalDpiY()));
    setToolTip(list.toolTip);
    setAccessibleName(list.toolTip);
}
