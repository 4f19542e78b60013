#include "elementstyle.h"

#include <QPainter>
#include <QPalette>
#include <QWidget>

#include <algorithm>

namespace {

// A skin cannot ask for a font taller than any window; beyond this the glyph
// cache only burns memory.
constexpr int LargestPointSize = 400;

} // namespace

QRect scaledRect(const QRect &rect, int scale)
{
    return QRect(rect.x() * scale, rect.y() * scale, rect.width() * scale, rect.height() * scale);
}

QFont fontFromSkin(const SkinFont &font, int scale)
{
    QFont f(font.name);
    f.setStyleHint(QFont::SansSerif);
    if (font.size > 0)
        f.setPointSize(std::min(font.size * scale, LargestPointSize));
    f.setBold(font.bold);
    f.setItalic(font.italic);
    f.setUnderline(font.underline);
    return f;
}

QFont listFont(const SkinList &list, int scale)
{
    SkinFont font;
    font.name = list.fontName.isEmpty() ? QStringLiteral("Arial") : list.fontName;
    font.size = list.fontSize < 0 ? -list.fontSize : list.fontSize;
    return fontFromSkin(font, scale);
}

void applyAreaStyle(QWidget &area, SkinColour fore, SkinColour back, const QFont &font)
{
    const QColor text = skinColourToQColor(fore);
    const QColor base = skinColourToQColor(back);
    QPalette p = area.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        p.setColor(group, QPalette::Base, base);
        p.setColor(group, QPalette::Window, base);
        p.setColor(group, QPalette::Text, text);
        p.setColor(group, QPalette::WindowText, text);
        p.setColor(group, QPalette::Highlight, text);
        p.setColor(group, QPalette::HighlightedText, base);
    }
    area.setPalette(p);
    area.setFont(font);
}

void paintAuthorOutline(QPainter &painter, const QRect &rect, int style, OutlineKind kind)
{
    if (style != 1 && style != 2)
        return;
    const QColor colour = kind == OutlineKind::Button ? QColor(255, 64, 160) : QColor(64, 255, 96);
    painter.save();
    const QRect r = rect.adjusted(0, 0, -1, -1);
    if (style == 1) {
        painter.setPen(QPen(colour, 1, Qt::DashLine));
        painter.setBrush(Qt::NoBrush);
    } else {
        QColor fill = colour;
        fill.setAlpha(70);
        painter.setPen(QPen(colour, 1));
        painter.setBrush(fill);
    }
    painter.drawRect(r);
    painter.restore();
}
