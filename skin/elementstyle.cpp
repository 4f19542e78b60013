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

QFont fontFromSkin(const SkinFont &font, int scale, int dpi)
{
    QFont f(font.name);
    f.setStyleHint(QFont::SansSerif);
    // Qt rounds a screen's scale down to a whole number for the skin's sake and
    // gives the rest to the fonts: a 144 DPI screen is scaled by 1 with fonts
    // half as big again, which would overflow every label of the skin.
    if (font.size > 0)
        f.setPointSizeF(std::min(font.size * scale, LargestPointSize) * 96.0 /
                        (dpi > 0 ? dpi : 96));
    f.setBold(font.bold);
    f.setItalic(font.italic);
    f.setUnderline(font.underline);
    return f;
}

QFont listFont(const SkinList &list, int scale, int dpi)
{
    SkinFont font;
    font.name = list.fontName.isEmpty() ? QStringLiteral("Arial") : list.fontName;
    font.size = list.fontSize < 0 ? -list.fontSize : list.fontSize;
    return fontFromSkin(font, scale, dpi);
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
