#pragma once

#include "skindescription.h"

#include <QFont>
#include <QRect>

class QPainter;
class QWidget;

// Skin coordinates are picture pixels; on the window every one of them is
// scale x scale pixels.
QRect scaledRect(const QRect &rect, int scale);

// The font rule of "L" and "T" records at the window's scale. A family that is
// not installed falls back to the desktop's sans-serif font. Skins give points
// as drawn on a 96 DPI screen; on a screen of another logical DPI (dpi, the
// element's logicalDpiY()) the text keeps the size in skin pixels that its
// rectangle was drawn for.
QFont fontFromSkin(const SkinFont &font, int scale, int dpi);

// A list's font is taken as named: no style letters, never bold.
QFont listFont(const SkinList &list, int scale, int dpi);

// Text and background colours and the font of a list or text area; the
// selection is drawn in inverse colours, which stays readable on any skin.
void applyAreaStyle(QWidget &area, SkinColour fore, SkinColour back, const QFont &font);

// Skin authors' outlines: 1 dashed lines, 2 solid lines over a tinted fill.
// Buttons and labels get different colours so the two can be told apart.
enum class OutlineKind { Button, Label };
void paintAuthorOutline(QPainter &painter, const QRect &rect, int style, OutlineKind kind);
