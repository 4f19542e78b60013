#include "skintokenizer.h"

#include <algorithm>
#include <limits>

QStringView SkinTokenizer::trimBlanks(QStringView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

namespace {

constexpr qint64 kNumberCap = qint64(1) << 40; // far beyond every range checked

// Optional sign, then digits; blanks around. With wholeField every character
// must be a digit; otherwise the number ends at the first that is not.
std::optional<qint64> parseNumber(QStringView text, bool wholeField)
{
    text = SkinTokenizer::trimBlanks(text);
    bool negative = false;
    if (!text.isEmpty() && (text.front() == QLatin1Char('+') || text.front() == QLatin1Char('-'))) {
        negative = text.front() == QLatin1Char('-');
        text = text.sliced(1);
        if (text.isEmpty() && wholeField)
            return std::nullopt;
    }
    qint64 value = 0;
    for (QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) {
            if (wholeField)
                return std::nullopt;
            break;
        }
        value = std::min(value * 10 + (c.unicode() - '0'), kNumberCap);
    }
    return negative ? -value : value;
}

template<typename T> std::optional<T> narrowed(std::optional<qint64> value)
{
    if (!value || *value < std::numeric_limits<T>::min() || *value > std::numeric_limits<T>::max())
        return std::nullopt;
    return T(*value);
}

} // namespace

bool SkinTokenizer::atEnd()
{
    if (m_lastEnd == FieldEnd::Comma)
        return false;
    skipBlankLines();
    return m_pos >= m_text.size();
}

std::optional<QString> SkinTokenizer::next()
{
    if (atEnd())
        return std::nullopt;
    return fieldHere();
}

QString SkinTokenizer::fieldHere()
{
    skipBlanks();
    QString field;
    if (m_pos < m_text.size() && m_text.at(m_pos) == QLatin1Char('"')) {
        const qsizetype start = ++m_pos;
        while (m_pos < m_text.size() && m_text.at(m_pos) != QLatin1Char('"') &&
               !isLineEnd(m_text.at(m_pos)))
            ++m_pos;
        field = m_text.sliced(start, m_pos - start);
        // Whatever follows the closing quote up to the delimiter is dropped.
        while (m_pos < m_text.size() && m_text.at(m_pos) != QLatin1Char(',') &&
               !isLineEnd(m_text.at(m_pos)))
            ++m_pos;
    } else {
        const qsizetype start = m_pos;
        while (m_pos < m_text.size() && m_text.at(m_pos) != QLatin1Char(',') &&
               !isLineEnd(m_text.at(m_pos)))
            ++m_pos;
        field = trimBlanks(QStringView(m_text).sliced(start, m_pos - start)).toString();
    }
    endField();
    return field;
}

std::optional<qint64> SkinTokenizer::number()
{
    const std::optional<QString> field = next();
    if (!field)
        return std::nullopt;
    return parseNumber(*field, true);
}

std::optional<qint16> SkinTokenizer::int16()
{
    return narrowed<qint16>(number());
}

std::optional<qint32> SkinTokenizer::int32()
{
    return narrowed<qint32>(number());
}

QString SkinTokenizer::restOfLine()
{
    const qsizetype start = m_pos;
    while (m_pos < m_text.size() && !isLineEnd(m_text.at(m_pos)))
        ++m_pos;
    QString rest = m_text.sliced(start, m_pos - start);
    skipLineEnd();
    m_lastEnd = m_pos >= m_text.size() ? FieldEnd::File : FieldEnd::Line;
    return rest;
}

QChar SkinTokenizer::peek()
{
    skipBlanks();
    return m_pos < m_text.size() ? m_text.at(m_pos) : QChar();
}

void SkinTokenizer::skipChar()
{
    if (m_pos < m_text.size())
        ++m_pos;
}

qint64 SkinTokenizer::codeNumber(QStringView rest)
{
    return parseNumber(rest, false).value_or(0);
}

void SkinTokenizer::skipBlanks()
{
    while (m_pos < m_text.size() && isBlank(m_text.at(m_pos)))
        ++m_pos;
}

void SkinTokenizer::skipBlankLines()
{
    while (m_pos < m_text.size() && (isBlank(m_text.at(m_pos)) || isLineEnd(m_text.at(m_pos))))
        ++m_pos;
}

void SkinTokenizer::skipLineEnd()
{
    if (m_pos < m_text.size() && m_text.at(m_pos) == QLatin1Char('\r'))
        ++m_pos;
    if (m_pos < m_text.size() && m_text.at(m_pos) == QLatin1Char('\n'))
        ++m_pos;
}

void SkinTokenizer::endField()
{
    if (m_pos >= m_text.size()) {
        m_lastEnd = FieldEnd::File;
    } else if (m_text.at(m_pos) == QLatin1Char(',')) {
        ++m_pos;
        m_lastEnd = FieldEnd::Comma;
    } else {
        skipLineEnd();
        m_lastEnd = FieldEnd::Line;
    }
}
