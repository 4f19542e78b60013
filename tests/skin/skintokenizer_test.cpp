#include "skin/skintokenizer.h"

#include "support/printers.h"

#include <gtest/gtest.h>

#include <limits>

// The skin reader's tests reach the 16-bit limits; these widths no record of theirs does.
TEST(SkinTokenizer, ReadsNumbersThatFitTheirWidth)
{
    constexpr qint64 kNone = std::numeric_limits<qint64>::min();
    const std::tuple<QString, qint64, qint64> cases[] = {
        {"32768", kNone, 32768},           {"-32769", kNone, -32769},
        {"2147483647", kNone, 2147483647}, {"-2147483648", kNone, -2147483648LL},
        {"2147483648", kNone, kNone},
    };
    const auto value = [kNone](auto read) { return read ? qint64(*read) : kNone; };
    for (const auto &[field, as16, as32] : cases) {
        SkinTokenizer a(field + QStringLiteral(",next"));
        EXPECT_EQ(value(a.int16()), as16) << "16-bit '" << field.toStdString() << "'";
        EXPECT_EQ(a.next(), QStringLiteral("next")) << "a bad number is still read whole";
        SkinTokenizer b(field + QStringLiteral(",next"));
        EXPECT_EQ(value(b.int32()), as32) << "32-bit '" << field.toStdString() << "'";
    }
}
