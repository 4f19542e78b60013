#include "core/schedule.h"

#include "support/printers.h"

#include <gtest/gtest.h>

namespace {

TEST(Schedule, MakeEntryLaysFieldsOutByPosition)
{
    // The last column is the entry made; nullptr: none.
    const std::tuple<char, const char *, const char *, int, const char *> cases[] = {
        {'E', "07:30", "08:00", 3, "E 07:30 08:00 03"},
        {'D', "07:30", "00:00", 1, "D 07:30 00:00 01"},
        {'U', "7:30", "8:0", 12, "U 7:30  8:0   12"},
        {'S', "", "", 0, "S             00"},
        {'M', "07:30:15", "08:00", 0, "M 07:30 08:00 00"},
        {'E', "00:00", "00:00", 5, nullptr},
        {'W', "00:00:59", "00:00", 2, nullptr},
        {'E', "0:00", "00:00", 2, "E 0:00  00:00 02"},
        {'F', "06:00", "07:00", -3, "F 06:00 07:00 -03"},
    };
    for (const auto &[day, on, off, preset, expected] : cases) {
        const auto entry = makeEntry(QChar::fromLatin1(day), QString::fromLatin1(on),
                                     QString::fromLatin1(off), preset);
        if (!expected) {
            EXPECT_FALSE(entry.has_value()) << on << " " << off;
            continue;
        }
        ASSERT_TRUE(entry.has_value()) << expected;
        EXPECT_EQ(*entry, QString::fromLatin1(expected));
    }
}

TEST(Schedule, FieldsReadBackFromTheirPositions)
{
    const std::tuple<const char *, QChar, const char *, const char *, int> cases[] = {
        {"E 07:30 08:00 03", QChar('E'), "07:30", "08:00", 3},
        {"D 07:30 00:00 9 radio", QChar('D'), "07:30", "00:00", 9},
        {"M 07:30 08:00  4.6", QChar('M'), "07:30", "08:00", 5},
        {"M 07:30 08:00 99999999", QChar('M'), "07:30", "08:00", 32767},
    };
    for (const auto &[text, day, on, off, preset] : cases) {
        const QString entry = QString::fromLatin1(text);
        EXPECT_EQ(entryDay(entry), day) << text;
        EXPECT_EQ(entryOnTime(entry), QString::fromLatin1(on)) << text;
        EXPECT_EQ(entryOffTime(entry), QString::fromLatin1(off)) << text;
        EXPECT_EQ(entryPreset(entry), preset) << text;
    }
}

TEST(Schedule, DayCodesMatchTheirWeekdays)
{
    // Columns: today U M T W R F S.
    const std::pair<const char *, const char *> cases[] = {
        {"E", "1111111"}, {"D", "0111110"}, {"N", "1000001"}, {"U", "1000000"}, {"T", "0010000"},
        {"R", "0000100"}, {"S", "0000001"}, {"s", "0000000"}, {"e", "0000000"},
    };
    const QString letters = QStringLiteral("UMTWRFS");
    for (const auto &[code, applies] : cases) {
        const QString entry = QString::fromLatin1(code) + QStringLiteral(" 07:30 08:00 01");
        for (int d = 0; d < 7; ++d)
            EXPECT_EQ(entryApplies(entry, letters[d]), applies[d] == '1')
                << "code '" << code << "' on " << letters[d].toLatin1();
        EXPECT_FALSE(entryApplies(entry, QChar())) << "no day known, code " << code;
    }
}

} // namespace
