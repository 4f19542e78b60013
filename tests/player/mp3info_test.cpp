#include "player/mp3info.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <gtest/gtest.h>

TEST(Mp3Info, DecodesHeaderFieldsWithTheProgramsOwnTables)
{
    const std::tuple<const char *, const char *, const char *, const char *, int, int> cases[] = {
        {"\xFF\xFB\x90\x44", "128", "44", "jstereo", 128, 44},
        {"\xFF\xFB\xF0\x00", "", "44", "stereo", 0, 44},      // index 15 is past the table
        {"\xFF\xFB\x00\x80", "144", "44", "dualch", 144, 44}, // entry 0 is "144"
        {"\xFF\xFB\x1C\xC0", "16", "??", "mono", 16, 0},
        {"ID3\x03", "48", "44", "stereo", 48, 44}, // a leading v2 tag shows what its bytes give
    };
    for (const auto &[header, bitRate, sampleRate, mode, bitNumber, sampleNumber] : cases) {
        SCOPED_TRACE(bitRate);
        const Mp3Info info = mp3InfoFromBytes(QByteArray(header, 4), QByteArray(256, 0));
        ASSERT_TRUE(info.examined);
        EXPECT_EQ(info.bitRate, QString::fromLatin1(bitRate));
        EXPECT_EQ(info.sampleRate, QString::fromLatin1(sampleRate));
        EXPECT_EQ(info.mode, QString::fromLatin1(mode));
        EXPECT_EQ(info.bitRateNumber, bitNumber);
        EXPECT_EQ(info.sampleRateNumber, sampleNumber);
    }
}

TEST(Mp3Info, ExaminesOnlyFilesOf256BytesOrMore)
{
    TempHome home;
    const std::pair<QString, bool> cases[] = {
        {home.write("short.mp3", audio(255)), false},
        {home.write("exact.mp3", audio(256)), true},
    };
    for (const auto &[path, examined] : cases)
        EXPECT_EQ(GetMP3Info(path).examined, examined) << path.toStdString();
}
