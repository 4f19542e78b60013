#include "skin/segmentdisplay.h"

#include "platform/clock.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

namespace {

// Longest text a number can format to: 309 integer digits of the largest
// double, sign, point and three decimals, with room to spare.
constexpr int TextCapacity = 400;

struct Number
{
    bool ok = false;
    bool integral = false;
    qint64 i = 0;
    double d = 0;
};

Number readNumber(const QVariant &value)
{
    Number n;
    switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::SChar:
    case QMetaType::Char:
    case QMetaType::UInt:
    case QMetaType::UShort:
    case QMetaType::UChar:
        n.i = value.toLongLong(&n.ok);
        n.integral = true;
        return n;
    default:
        break;
    }
    n.d = value.toDouble(&n.ok);
    // "nan" and "inf" parse as numbers; no mask can show them, so they stay text.
    if (n.ok && !std::isfinite(n.d))
        n.ok = false;
    if (n.ok && n.d == std::trunc(n.d) && std::fabs(n.d) < 9e15) {
        n.integral = true;
        n.i = static_cast<qint64>(n.d);
    }
    return n;
}

int putDigits(char16_t *out, const char *digits, int count)
{
    for (int k = 0; k < count; ++k)
        out[k] = char16_t(u'0' + digits[k]);
    return count;
}

// Writes the number as a mask of intDigits zeros, then "." and decimals zeros,
// would show it: at least intDigits integer digits, rounded half away from zero
// on the number's 15 significant digits, "-" before a negative non-zero result.
int formatMasked(const Number &n, int intDigits, int decimals, char16_t *out)
{
    char scaled[TextCapacity];
    int len = 0;
    bool negative = false;
    if (n.integral) {
        negative = n.i < 0;
        const quint64 magnitude = negative ? 0 - quint64(n.i) : quint64(n.i);
        char text[24];
        const auto end = std::to_chars(text, text + sizeof text, magnitude).ptr;
        for (const char *p = text; p != end; ++p)
            scaled[len++] = char(*p - '0');
        for (int k = 0; k < decimals; ++k)
            scaled[len++] = 0;
    } else {
        negative = n.d < 0;
        char sci[40];
        // d.dddddddddddddde±x: the 15 significant digits a mask works from.
        const auto end =
            std::to_chars(sci, sci + sizeof sci, std::fabs(n.d), std::chars_format::scientific, 14)
                .ptr;
        char digits[15];
        digits[0] = char(sci[0] - '0');
        for (int k = 1; k < 15; ++k)
            digits[k] = char(sci[k + 1] - '0');
        const char *e = sci + 17; // after "e"
        const bool negExp = *e == '-';
        int exponent = 0;
        for (const char *p = e + 1; p < end; ++p)
            exponent = exponent * 10 + (*p - '0');
        if (negExp)
            exponent = -exponent;
        const int units = exponent + 1 + decimals; // digits of value * 10^decimals
        if (units >= 0) {
            for (int k = 0; k < units; ++k)
                scaled[len++] = k < 15 ? digits[k] : 0;
            if (units < 15 && digits[units] >= 5) {
                int k = len - 1;
                while (k >= 0 && scaled[k] == 9)
                    scaled[k--] = 0;
                if (k >= 0) {
                    ++scaled[k];
                } else {
                    std::memmove(scaled + 1, scaled, size_t(len));
                    scaled[0] = 1;
                    ++len;
                }
            }
        }
    }

    const int intLen = std::max(len - decimals, 0);
    int first = 0;
    while (first < intLen && scaled[first] == 0)
        ++first;
    const bool zero = std::all_of(scaled, scaled + len, [](char c) { return c == 0; });

    int at = 0;
    if (negative && !zero)
        out[at++] = u'-';
    for (int k = intLen - first; k < intDigits; ++k)
        out[at++] = u'0';
    at += putDigits(out + at, scaled + first, intLen - first);
    if (decimals > 0) {
        out[at++] = u'.';
        for (int k = len; k < decimals; ++k)
            out[at++] = u'0';
        const int fracFrom = std::max(len - decimals, 0);
        at += putDigits(out + at, scaled + fracFrom, len - fracFrom);
    }
    return at;
}

int formatTwo(qint64 v, char16_t *out)
{
    Number n;
    n.ok = n.integral = true;
    n.i = v;
    return formatMasked(n, 2, 0, out);
}

void putTwo(char16_t *out, int v)
{
    out[0] = char16_t(u'0' + v / 10 % 10);
    out[1] = char16_t(u'0' + v % 10);
}

char32_t upper(char32_t c)
{
    if (c >= u'a' && c <= u'z')
        return c - 32;
    if (c < 128)
        return c;
    return QChar::toUpper(c);
}

// The letter sheet: letters on row 0, digits and symbols on row 1, a few odd
// ones on row 2. "@" shares "I"'s cell; skins are drawn with that in mind.
void letterCell(char32_t c, int &row, int &col)
{
    static constexpr char16_t symbols[] = u":()-'!_+\\/[]^&%.=$#";
    row = 0;
    col = 29;
    if (c >= u'A' && c <= u'Z') {
        col = int(c - u'A');
    } else if (c >= u'0' && c <= u'9') {
        row = 1;
        col = int(c - u'0');
    } else if (c == u'"') {
        col = 27;
    } else if (c == u'*') {
        row = 2;
        col = 4;
    } else if (c == u'?') {
        row = 2;
        col = 3;
    } else if (c == u'@') {
        col = 8;
    } else {
        for (int k = 0; symbols[k]; ++k) {
            if (c == symbols[k]) {
                row = 1;
                col = k + 12;
                break;
            }
        }
    }
}

// The cell of the digit sheet that shows character i of a group's text: 0
// to 9 the digits, 10 a blank (leading zeros until zeroState turns 1), 11
// ".", 12 ":", 13 "-". Anything else shows as a blank.
int digitCell(char16_t c, qsizetype i, int &zeroState)
{
    int col = 10;
    if (c == u'0' && zeroState < 1) {
        col = 10;
    } else if (c >= u'0' && c <= u'9') {
        col = c - u'0';
        zeroState = 1;
    } else if (c == u'.' || c == u':') {
        col = c == u'.' ? 11 : 12;
    } else if (c == u'-') {
        col = 13;
    }
    if (i == 0 && zeroState == -1)
        zeroState = 1;
    return col;
}

// Width of the group's cell on the window, decided by its display mode.
int cellWidth(const DigitGroup &g)
{
    const int w = g.width;
    const int n = g.narrow;
    switch (g.mode) {
    case 0:
    case 1:
    case 3:
        return 4 * w + n;
    case 2:
        return 6 * w + 2 * n;
    case 4:
        return 6 * w + n;
    default:
        return w * std::abs(int(g.mode));
    }
}

} // namespace

QRect cellRect(const DigitGroup &g)
{
    return QRect(g.x, g.y, cellWidth(g), g.height);
}

struct SegmentDisplay::Target
{
    uchar *dst = nullptr;
    qsizetype dstStride = 0;
    qint64 dstW = 0, dstH = 0;
    const uchar *src = nullptr;
    qsizetype srcStride = 0;
    qint64 srcW = 0, srcH = 0;
    int bytesPerPixel = 0;
    bool attempted = false;
    qint64 left = 0, top = 0, right = 0, bottom = 0; // extent actually painted

    // A plain copy, clipped to both pictures, as the glyph sheet's pixels
    // replace what was under the pen.
    void copy(qint64 sx, qint64 sy, qint64 w, qint64 h, qint64 dx, qint64 dy)
    {
        attempted = true;
        if (sx < 0) {
            dx -= sx;
            w += sx;
            sx = 0;
        }
        if (sy < 0) {
            dy -= sy;
            h += sy;
            sy = 0;
        }
        if (dx < 0) {
            sx -= dx;
            w += dx;
            dx = 0;
        }
        if (dy < 0) {
            sy -= dy;
            h += dy;
            dy = 0;
        }
        w = std::min({w, srcW - sx, dstW - dx});
        h = std::min({h, srcH - sy, dstH - dy});
        if (w <= 0 || h <= 0)
            return;
        const size_t rowBytes = size_t(w) * size_t(bytesPerPixel);
        for (qint64 r = 0; r < h; ++r) {
            // memmove: a caller may hand the same picture as canvas and sheet.
            std::memmove(dst + (dy + r) * dstStride + dx * bytesPerPixel,
                         src + (sy + r) * srcStride + sx * bytesPerPixel, rowBytes);
        }
        if (right <= left) {
            left = dx;
            top = dy;
            right = dx + w;
            bottom = dy + h;
        } else {
            left = std::min(left, dx);
            top = std::min(top, dy);
            right = std::max(right, dx + w);
            bottom = std::max(bottom, dy + h);
        }
    }
};

SegmentDisplay::SegmentDisplay(QImage &canvas, const QImage &resource, const Clock &clock,
                               RepaintFn repaint, LabelFn setLabel)
    : m_canvas(canvas), m_resource(resource), m_clock(clock), m_repaint(std::move(repaint)),
      m_setLabel(std::move(setLabel))
{
}

void SegmentDisplay::setGroup(int index, const DigitGroup &group)
{
    if (index < 0 || index >= GroupCount)
        return;
    m_slots[size_t(index)].layout = group;
    m_slots[size_t(index)].cell = cellRect(group);
    m_label9Sent = false;
}

void SegmentDisplay::setGroupVisible(int index, bool visible)
{
    if (index >= 0 && index < GroupCount)
        m_slots[size_t(index)].layout.visible = visible;
}

void SegmentDisplay::clearGroups()
{
    for (Slot &slot : m_slots) {
        slot.layout = DigitGroup();
        slot.cell = QRect();
    }
    m_label9Sent = false;
}

const DigitGroup &SegmentDisplay::group(int index) const
{
    static const DigitGroup none;
    if (index < 0 || index >= GroupCount)
        return none;
    return m_slots[size_t(index)].layout;
}

QVariant SegmentDisplay::value(int index) const
{
    if (index < 0 || index >= GroupCount)
        return {};
    return m_slots[size_t(index)].value;
}

QString SegmentDisplay::text(int index) const
{
    if (index < 0 || index >= GroupCount)
        return {};
    const Slot &slot = m_slots[size_t(index)];
    const int sheet = slot.layout.sheetType;
    if (!slot.layout.visible || sheet < 0 || sheet > 3)
        return {};
    char16_t buffer[TextCapacity];
    QString holder;
    int zeroState = 0;
    const QStringView text = makeText(slot, slot.value, buffer, zeroState, holder);
    QString shown;
    if (sheet == 0) {
        static constexpr char16_t glyphs[] = u"0123456789 .:-";
        for (qsizetype i = 0; i < text.size(); ++i)
            shown += QChar(glyphs[digitCell(text[i].unicode(), i, zeroState)]);
        // Blanked hours leave their colon standing: "  :03:25" reads as "03:25".
        qsizetype first = 0;
        while (first < shown.size() &&
               (shown[first] == u' ' || shown[first] == u':' ||
                (shown[first] == u'.' && first + 1 < shown.size() && !shown[first + 1].isDigit())))
            ++first;
        shown.remove(0, first);
    } else {
        const int cells = std::abs(int(slot.layout.mode));
        shown = text.left(cells).toString();
        if (sheet >= 2)
            shown = shown.toUpper();
    }
    return shown.trimmed();
}

void SegmentDisplay::sendLabel9(QStringView text)
{
    // The clock redraws many times a second; the label only changes once.
    if (m_label9Sent && m_label9 == text)
        return;
    m_label9 = text.toString();
    m_label9Sent = true;
    if (m_setLabel)
        m_setLabel(9, m_label9);
}

QStringView SegmentDisplay::makeText(const Slot &slot, const QVariant &value, char16_t *buffer,
                                     int &zeroState, QString &holder) const
{
    const int mode = slot.layout.mode;
    zeroState = 0;

    if (mode == 1 || mode == 2) {
        const QTime now = m_clock.now().time();
        const int h = now.isValid() ? now.hour() : 0;
        const int m = now.isValid() ? now.minute() : 0;
        const int s = now.isValid() ? now.second() : 0;
        putTwo(buffer, m_twentyFourHour ? h : (h % 12 == 0 ? 12 : h % 12));
        buffer[2] = u':';
        putTwo(buffer + 3, m);
        int len = 5;
        if (mode == 2) {
            buffer[len++] = u':';
            putTwo(buffer + len, s);
            len += 2;
        }
        if (m_twentyFourHour) {
            // "hh:mm" is padded with four blanks, "hh:mm:ss" with one.
            for (int pad = mode == 1 ? 4 : 1; pad > 0; --pad)
                buffer[len++] = u' ';
        } else {
            buffer[len++] = u' ';
            buffer[len++] = h < 12 ? u'A' : u'P';
            buffer[len++] = u'M';
        }
        zeroState = m_twentyFourHour ? 1 : 0;
        return QStringView(buffer, 5);
    }

    const bool padded = mode >= -15 && mode <= -1;
    if (padded || mode == 5)
        zeroState = -1;
    const Number n = padded || (mode >= 3 && mode <= 5) ? readNumber(value) : Number();
    if (!n.ok) {
        // Like a format mask, a value that is no number is shown as its text.
        holder = value.toString();
        if (padded && holder.size() > -mode)
            return QStringView(holder).last(-mode);
        return holder;
    }
    if (padded) {
        const QStringView text(buffer, formatMasked(n, -mode, 0, buffer));
        return text.size() > -mode ? text.last(-mode) : text;
    }
    if (mode == 3 || mode == 4)
        return QStringView(buffer, formatMasked(n, 3, mode == 3 ? 1 : 3, buffer));

    qint64 seconds = n.i;
    if (!n.integral)
        seconds = std::llround(std::clamp(n.d, -9e18, 9e18));
    const qint64 hours = seconds / 3600;
    const qint64 minutes = (seconds - 3600 * hours) / 60;
    int len = formatTwo(hours, buffer);
    buffer[len++] = u':';
    len += formatTwo(minutes, buffer + len);
    buffer[len++] = u':';
    len += formatTwo(seconds - 3600 * hours - 60 * minutes, buffer + len);
    return QStringView(buffer, len);
}

bool SegmentDisplay::prepareTarget(Target &t)
{
    const QImage::Format canvasFormat = m_canvas.format();
    // A canvas with a colour table could not take the sheet's pixels as they are.
    if (m_canvas.isNull() || m_canvas.depth() < 8 || m_canvas.depth() % 8 != 0 ||
        canvasFormat == QImage::Format_Indexed8)
        return false;

    const QImage::Format sheetFormat = m_resource.format();
    const bool sameLayout =
        sheetFormat == canvasFormat || (sheetFormat == QImage::Format_RGB32 &&
                                        (canvasFormat == QImage::Format_ARGB32 ||
                                         canvasFormat == QImage::Format_ARGB32_Premultiplied));
    const QImage *sheet = &m_resource;
    if (!sameLayout) {
        // cacheKey changes whenever the resource picture is replaced or edited.
        if (m_converted.isNull() || m_convertedKey != m_resource.cacheKey() ||
            m_converted.format() != canvasFormat) {
            m_converted = m_resource.convertToFormat(canvasFormat);
            m_convertedKey = m_resource.cacheKey();
        }
        sheet = &m_converted;
    }

    t.dst = m_canvas.bits();
    t.dstStride = m_canvas.bytesPerLine();
    t.dstW = m_canvas.width();
    t.dstH = m_canvas.height();
    t.bytesPerPixel = m_canvas.depth() / 8;
    t.src = sheet->constBits();
    t.srcStride = sheet->bytesPerLine();
    t.srcW = sheet->isNull() ? 0 : sheet->width();
    t.srcH = sheet->isNull() ? 0 : sheet->height();
    return t.dst != nullptr;
}

void SegmentDisplay::drawDigits(const Slot &slot, QStringView text, int zeroState, Target &t)
{
    const DigitGroup &g = slot.layout;
    const qint64 w = g.width;
    const qint64 narrow = g.narrow;
    const qint64 stepWide = w + g.gap;
    const qint64 stepNarrow = narrow + g.gap;
    const bool forward = stepWide >= 0 && stepNarrow >= 0;
    const bool backward = stepWide <= 0 && stepNarrow <= 0 && !forward;
    const qint64 widest = std::max<qint64>({w, narrow, 0});
    qint64 pen = g.x;

    for (qsizetype i = 0; i < text.size(); ++i) {
        // Whatever follows lies beyond the canvas: stop, however long the text.
        if ((forward && pen >= t.dstW) || (backward && pen + widest <= 0))
            break;
        const int col = digitCell(text[i].unicode(), i, zeroState);
        const bool isNarrow = col == 11 || col == 12;
        const qint64 glyphWidth = isNarrow ? narrow : w;
        t.copy(g.faceX + col * w, g.faceY, glyphWidth, g.height, pen, g.y);
        pen += isNarrow ? stepNarrow : stepWide;
    }
}

void SegmentDisplay::drawCharacters(const Slot &slot, QStringView text, Target &t)
{
    const DigitGroup &g = slot.layout;
    const qint64 w = g.width;
    const qint64 h = g.height;
    const qint64 step = w + g.gap;
    const int cells = std::abs(int(g.mode));
    qint64 pen = g.x;

    for (int i = 0; i < cells; ++i) {
        if ((step >= 0 && pen >= t.dstW) || (step < 0 && pen + std::max<qint64>(w, 0) <= 0))
            break;
        char32_t c = i < text.size() ? text[i].unicode() : u' ';
        if (g.sheetType >= 2)
            c = upper(c);
        int row = 0;
        int col = 0;
        if (g.sheetType == 3) {
            letterCell(c, row, col);
        } else if (c >= 32 && c <= 127) {
            row = int(c / 16) - 2;
            col = int(c % 16);
        }
        t.copy(g.faceX + col * w, g.faceY + row * h, w, h, pen, g.y);
        pen += step;
    }
}

void SegmentDisplay::SetDD(int group, const QVariant &value)
{
    if (group < 0 || group >= GroupCount)
        return;
    Slot &slot = m_slots[size_t(group)];
    slot.value = value;
    if (!slot.layout.visible)
        return;

    char16_t buffer[TextCapacity];
    QString holder;
    int zeroState = 0;
    const QStringView text = makeText(slot, value, buffer, zeroState, holder);
    // Characters 7 and 8 of a clock: AM/PM or blanks in mode 1, the seconds
    // in mode 2; so the 12-hour form of mode 2 shows no AM/PM at all.
    if (slot.layout.mode == 1 || slot.layout.mode == 2)
        sendLabel9(QStringView(buffer + 6, 2));

    const int sheet = slot.layout.sheetType;
    if (sheet < 0 || sheet > 3)
        return;
    Target t;
    if (!prepareTarget(t))
        return;
    if (sheet == 0)
        drawDigits(slot, text, zeroState, t);
    else
        drawCharacters(slot, text, t);

    if (!t.attempted || !m_repaint)
        return;
    // Text too long for its cell is drawn on past the cell; repaint that too.
    QRect area = slot.cell.normalized();
    if (t.right > t.left)
        area |= QRect(int(t.left), int(t.top), int(t.right - t.left), int(t.bottom - t.top));
    area &= m_canvas.rect();
    if (!area.isEmpty())
        m_repaint(area);
}
