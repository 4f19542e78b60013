#include "platform/text.h"
#include "support/printers.h"

#include <gtest/gtest.h>

#include <numeric>

TEST(Text, LeadingNumberReadsWhatFilesAndSettingsWrite)
{
    const struct
    {
        const char *text;
        double value;
    } cases[] = {
        {"abc", 0},    {"42", 42},     {"  -7.5xyz", -7.5}, {"1 2", 12},  {"088.0 FM", 88},
        {"1e3", 1000}, {"2d2", 200},   {"3e", 3},           {"+.5", 0.5}, {"1e999", 0},
        {"12:30", 12}, {"1.2.3", 1.2}, {"\t9\r\n", 9},
    };
    for (const auto &c : cases)
        EXPECT_EQ(leadingNumber(QString::fromLatin1(c.text)), c.value) << c.text;
}

TEST(Text, DecodesUtf8ElseWindows1252)
{
    EXPECT_EQ(decodeText("\xEF\xBB\xBF#EXTM3U"), QStringLiteral("#EXTM3U"));
    EXPECT_EQ(decodeText("caf\xC3\xA9"), QStringLiteral("café"));
    EXPECT_EQ(decodeText("\xEF\xBB\xBF\xE9"), QStringLiteral("é"));
    // Only the first mark is the file's; a second is the text's.
    EXPECT_EQ(decodeText("\xEF\xBB\xBF\xEF\xBB\xBFM"), QStringLiteral("\uFEFFM"));
    // Not UTF-8: every byte still means a character, the euro sign included.
    EXPECT_EQ(decodeText("caf\xE9 \x80"), QStringLiteral("café €"));
    QByteArray every(256, '\0');
    std::iota(every.begin(), every.end(), char(0));
    EXPECT_EQ(toWindows1252(fromWindows1252(every)), every);
    EXPECT_EQ(toWindows1252(QStringLiteral("a\u4E00b")), QByteArray("a?b"));
}
