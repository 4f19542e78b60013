#include "skin/skintokenizer.h"

#include "support/printers.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <limits>

namespace {

// Every field of the text with the way it ended: ',' comma, '|' line end, '$' end of file.
QStringList fieldsOf(const QString &text)
{
    SkinTokenizer t(text);
    QStringList out;
    while (const std::optional<QString> field = t.next()) {
        const char end = t.lastEnd() == SkinTokenizer::FieldEnd::Comma  ? ','
                         : t.lastEnd() == SkinTokenizer::FieldEnd::Line ? '|'
                                                                        : '$';
        out << *field + QLatin1Char(end);
        if (out.size() > 100)
            break;
    }
    EXPECT_TRUE(t.atEnd());
    return out;
}

} // namespace

TEST(SkinTokenizer, SplitsFieldsAtCommasAndLineEnds)
{
    const std::tuple<const char *, QString, QStringList> cases[] = {
        {"empty file", "", {}},
        {"only blank lines", " \r\n\t\n\r\n", {}},
        {"commas and CR LF", "a,b\r\nc", {"a,", "b|", "c$"}},
        {"LF and lone CR", "a\nb\rc\r\n", {"a|", "b|", "c|"}},
        {"comma before a line end", "a,\r\nb", {"a,", "|", "b$"}},
        {"comma at the end of the file", "a,", {"a,", "$"}},
        {"empty fields between commas", ",,x", {",", ",", "x$"}},
        {"blank lines between fields", "a\r\n\r\n  \r\nb", {"a|", "b$"}},
        {"blanks around plain fields", " \t two words \t,x", {"two words,", "x$"}},
        {"quoted commas and blanks", "\" a, b \",c", {" a, b ,", "c$"}},
        {"text after a closing quote", "\"ab\"cd ,e", {"ab,", "e$"}},
        {"quotes inside a plain field", "say \"hi\",x", {"say \"hi\",", "x$"}},
        {"unclosed quote ends with its line", "\"ab,c\r\nd,e", {"ab,c|", "d,", "e$"}},
        {"quote at the end of the file", "\"", {"$"}},
        {"empty quotes", "\"\",\"\"", {",", "$"}},
    };
    for (const auto &[what, text, fields] : cases)
        EXPECT_EQ(fieldsOf(text), fields) << what;
}

TEST(SkinTokenizer, ReadsNumbersThatFitTheirWidth)
{
    constexpr qint64 kNone = std::numeric_limits<qint64>::min();
    // clang-format off
    const std::tuple<QString, qint64, qint64> cases[] = {
        {"0", 0, 0},                {"", 0, 0},                  {"  +12\t", 12, 12},
        {"-32768", -32768, -32768}, {"32767", 32767, 32767},     {"32768", kNone, 32768},
        {"-32769", kNone, -32769},  {"2147483647", kNone, 2147483647},
        {"-2147483648", kNone, -2147483648LL},                   {"2147483648", kNone, kNone},
        {"99999999999999999999999", kNone, kNone},               {"-", kNone, kNone},
        {"1 2", kNone, kNone},      {"12a", kNone, kNone},       {"1.5", kNone, kNone},
        {"\"7\"", 7, 7},
    };
    // clang-format on
    const auto value = [kNone](auto read) { return read ? qint64(*read) : kNone; };
    for (const auto &[field, as16, as32] : cases) {
        SkinTokenizer a(field + QStringLiteral(",next"));
        EXPECT_EQ(value(a.int16()), as16) << "16-bit '" << field.toStdString() << "'";
        EXPECT_EQ(a.next(), QStringLiteral("next")) << "a bad number is still read whole";
        SkinTokenizer b(field + QStringLiteral(",next"));
        EXPECT_EQ(value(b.int32()), as32) << "32-bit '" << field.toStdString() << "'";
    }
    SkinTokenizer ended(QStringLiteral("1\r\n\r\n"));
    EXPECT_EQ(ended.int16(), 1);
    EXPECT_EQ(ended.int16(), std::nullopt) << "no number after the end of the file";
    EXPECT_EQ(ended.int32(), std::nullopt);
}

TEST(SkinTokenizer, CodeNumberTakesTheLeadingDigits)
{
    const std::tuple<QString, qint64> cases[] = {
        {"12", 12},          {"", 0},
        {"12abc", 12},       {" -5", -5},
        {"+7 ", 7},          {"-", 0},
        {"00032767", 32767}, {"1.9", 1},
        {"on-night", 0},     {"99999999999999999999", qint64(1) << 40},
    };
    for (const auto &[rest, n] : cases)
        EXPECT_EQ(SkinTokenizer::codeNumber(rest), n) << "'" << rest.toStdString() << "'";
}

TEST(SkinTokenizer, RestOfLineKeepsQuotesAndCommasAndEndsTheLine)
{
    SkinTokenizer t(QStringLiteral("  ; a, \"b\" ,c\r\nB1,\"x\" / y\n/z"));
    EXPECT_EQ(t.peek(), QLatin1Char(';'));
    t.skipChar();
    EXPECT_EQ(t.restOfLine(), QStringLiteral(" a, \"b\" ,c"));
    EXPECT_EQ(t.lastEnd(), SkinTokenizer::FieldEnd::Line);
    EXPECT_EQ(t.next(), QStringLiteral("B1"));
    EXPECT_EQ(t.lastEnd(), SkinTokenizer::FieldEnd::Comma);
    EXPECT_EQ(t.restOfLine(), QStringLiteral("\"x\" / y")) << "from where the last field ended";
    EXPECT_EQ(t.peek(), QLatin1Char('/'));
    t.skipChar();
    EXPECT_EQ(t.restOfLine(), QStringLiteral("z"));
    EXPECT_EQ(t.lastEnd(), SkinTokenizer::FieldEnd::File);
    EXPECT_TRUE(t.atEnd());
    EXPECT_EQ(t.peek(), QChar());
    t.skipChar();
    EXPECT_EQ(t.restOfLine(), QString());
    EXPECT_EQ(t.next(), std::nullopt);
}
