#include "text.h"

#include <QStringDecoder>

#include <cmath>

namespace {

// Unicode of the bytes 0x80 to 0x9F.
constexpr char16_t kHigh[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char byteFor(char32_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return char(c);
    for (int i = 0; i < 32; ++i) {
        if (kHigh[i] == c)
            return char(0x80 + i);
    }
    return '?';
}

} // namespace

QString fromWindows1252(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    QChar *out = text.data();
    for (const char b : bytes) {
        const quint8 u = quint8(b);
        *out++ = u >= 0x80 && u < 0xA0 ? QChar(kHigh[u - 0x80]) : QChar(u);
    }
    return text;
}

QByteArray toWindows1252(QStringView text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const char32_t c : text.toUcs4())
        bytes += byteFor(c);
    return bytes;
}

QString decodeText(QByteArrayView bytes)
{
    // The mark goes even when the rest turns out not to be UTF-8: a file
    // damaged further on still starts with the text it meant.
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes = bytes.sliced(3);
    // One mark only: the decoder would drop a second, which is text.
    QStringDecoder utf8(QStringDecoder::Utf8,
                        QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = utf8(bytes);
    return utf8.hasError() ? fromWindows1252(bytes) : text;
}

QString twoDigits(int n)
{
    const QString digits = QString::number(qAbs(qint64(n))).rightJustified(2, QLatin1Char('0'));
    return n < 0 ? QLatin1Char('-') + digits : digits;
}

double leadingNumber(QStringView text)
{
    QByteArray number;
    bool digits = false, point = false, exponent = false;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u == ' ' || u == '\t' || u == '\n' || u == '\r')
            continue;
        if (u >= '0' && u <= '9') {
            digits = true;
        } else if ((u == '+' || u == '-') && (number.isEmpty() || number.endsWith('e'))) {
        } else if (u == '.' && !point && !exponent) {
            point = true;
        } else if ((u == 'e' || u == 'E' || u == 'd' || u == 'D') && digits && !exponent) {
            exponent = true;
            number += 'e';
            continue;
        } else {
            break;
        }
        number += char(u);
    }
    if (!digits)
        return 0;
    while (!number.isEmpty() && !(number.back() >= '0' && number.back() <= '9') &&
           number.back() != '.')
        number.chop(1);
    bool ok = false;
    const double value = number.toDouble(&ok);
    return ok && std::isfinite(value) ? value : 0;
}

QStringList splitLines(const QString &text)
{
    QStringList lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c != QLatin1Char('\n') && c != QLatin1Char('\r'))
            continue;
        lines << text.mid(start, i - start);
        if (c == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n'))
            ++i;
        start = i + 1;
    }
    if (start < text.size())
        lines << text.mid(start);
    return lines;
}
