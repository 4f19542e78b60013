#include "fliwriter.h"
#include "platform/fliheader.h"

#include <gtest/gtest.h>

namespace {

TEST(FliHeader, LengthIsFramesTimesTheDelayInEachFormatsUnitAndAnythingElseHasNone)
{
    QByteArray dta = makeFlic(true, 10, 40);
    dta[4] = char(0x44); // the 0xAF44 variant times like FLC
    QByteArray wideFli = makeFlic(false, 14, 5);
    wideFli[18] = 1; // FLI's delay is 16 bits: what follows is not part of it
    const struct
    {
        const char *name;
        QByteArray bytes;
        bool flc;
        int frames;
        qint64 ms;
    } cases[] = {
        {"FLI counts in 1/70 s", makeFlic(false, 20, 7), false, 20, 2000},
        {"FLI rounds to the nearest millisecond", makeFlic(false, 1, 1), false, 1, 14},
        {"FLI ignores the bytes after its 16-bit delay", wideFli, false, 14, 1000},
        {"FLC counts in milliseconds", makeFlic(true, 25, 40), true, 25, 1000},
        {"FLC reads a 32-bit delay", makeFlic(true, 2, 70000), true, 2, 140000},
        {"AF44 is timed like FLC", dta, true, 10, 400},
        {"a zero FLI delay plays as 5/70 s", makeFlic(false, 14, 0), false, 14, 1000},
        {"the largest counts do not overflow", makeFlic(true, 65535, 0xffffffffu), true, 65535,
         qint64(65535) * 0xffffffffLL},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const FliHeader h = FliHeader::read(c.bytes.left(FliHeader::Size));
        EXPECT_TRUE(h.valid);
        EXPECT_EQ(h.flc, c.flc);
        EXPECT_EQ(h.frames, c.frames);
        EXPECT_EQ(h.lengthMs, c.ms);
    }

    // Anything else has no length: too short, no frames, another signature.
    QByteArray otherMagic = makeFlic(false, 5, 7);
    otherMagic[5] = char(0xbf);
    for (const QByteArray &bytes :
         {makeFlic(false, 20, 7).left(19), makeFlic(false, 0, 7), otherMagic}) {
        SCOPED_TRACE(bytes.left(8).toHex().toStdString());
        const FliHeader h = FliHeader::read(bytes);
        EXPECT_FALSE(h.valid);
        EXPECT_EQ(h.lengthMs, 0);
    }
}

} // namespace
