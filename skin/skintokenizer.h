#pragma once

#include <QString>
#include <QStringView>

#include <optional>

// The fields of a skin file, read as a sequential text file is: fields end at a
// comma or a line end, so a comma that ends a line leaves an empty field before
// the line end; blank lines hold no field. A quoted text keeps its commas but
// never runs past its line, so a lost quote spoils one line, not the file.
// Pure and total: any text reads to its end without a crash or a loop.
class SkinTokenizer
{
public:
    enum class FieldEnd { Comma, Line, File };

    explicit SkinTokenizer(QString text) : m_text(std::move(text)) {}

    bool atEnd();

    // The next field, wherever it is; nothing at the end of the file.
    std::optional<QString> next();
    // The field that starts here; empty when the line ends here.
    QString fieldHere();
    // The next field as a signed 16-bit or 32-bit number: optional sign and
    // digits, blanks around, an empty field reads 0. Nothing when the file has
    // ended, the field is no number or the number does not fit.
    std::optional<qint16> int16();
    std::optional<qint32> int32();

    // The raw rest of the current line, quotes and commas included; the line
    // end is consumed.
    QString restOfLine();
    // The character after any blanks, without reading it.
    QChar peek();
    void skipChar();

    // How the last field or line ended.
    FieldEnd lastEnd() const { return m_lastEnd; }

    // The number after the kind letter of a record code: optional sign, then
    // the leading digits; 0 when there are none. Capped far beyond 32 bits, so
    // callers can still tell a number that does not fit.
    static qint64 codeNumber(QStringView rest);

    // Skipped around fields. A form feed or a vertical tab is not: it is
    // part of the field.
    static bool isBlank(QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); }
    static bool isLineEnd(QChar c) { return c == QLatin1Char('\n') || c == QLatin1Char('\r'); }
    static QStringView trimBlanks(QStringView text);

private:
    std::optional<qint64> number();
    void skipBlanks();
    void skipBlankLines();
    void skipLineEnd();
    void endField();

    QString m_text;
    qsizetype m_pos = 0;
    FieldEnd m_lastEnd = FieldEnd::Line;
};
