#include "player/mediaerror.h"
#include "support/printers.h"

#include <gtest/gtest.h>

TEST(MediaErrorMessage, ExplainsEachErrorNumber)
{
    struct Case
    {
        int error;
        const char *device;
        const char *explanation;
    };
    const Case cases[] = {
        {263, "cdaudio", "MCI driver is NOT installed.\rSee Velto documentation!"},
        {264, "MPEGVideo", "Out of memory."},
        {274, "MPEGVideo",
         "Make sure you are using the Microsoft MPEGVideo driver!\rMPEG Video may have been "
         "re-assigned to a DVD drive or card.\rYou may need to use the ActiveMovie driver (see "
         "docs)!"},
        {274, "MPEGVideo2", "Try installing the latest MS MediaPlayer (formerly ActiveMovie)."},
        {274, "ActiveMovie", "Try installing the latest MS MediaPlayer (formerly ActiveMovie)."},
        {277, "MPEGVideo",
         "The File could not be opened.\rIt may be an unknown format, corrupt, or an "
         "un-supported variation of a known format."},
        {275, "MPEGVideo", "Unhandled Velto error\rFilename: /m/a.mp3"},
        {0, "MPEGVideo", "Unhandled Velto error\rFilename: /m/a.mp3"},
    };
    for (const Case &c : cases) {
        const QString expected = QStringLiteral("MCI Device: ") + QString::fromUtf8(c.device) +
                                 QStringLiteral("\rFilename: /m/a.mp3\r\rError: it failed\r\r") +
                                 QString::fromUtf8(c.explanation);
        EXPECT_EQ(mediaErrorMessage(c.error, QString::fromUtf8(c.device),
                                    QStringLiteral("/m/a.mp3"), QStringLiteral("it failed")),
                  expected)
            << c.error << " " << c.device;
    }
}

TEST(MediaErrorMessage, OutOfMemoryBecomesTheLengthRuleAfter98CharactersWithTheLabel)
{
    const QString tooLong = QStringLiteral("The filename and path must be 98 characters or less!");
    // "Filename: " is ten characters: an 88-character path is the longest that passes.
    for (const auto &[length, explanation] : {std::pair{88, QStringLiteral("Out of memory.")},
                                              std::pair{89, tooLong}, std::pair{200, tooLong}}) {
        const QString path = QStringLiteral("/") + QString(length - 1, QLatin1Char('a'));
        EXPECT_TRUE(mediaErrorMessage(264, QStringLiteral("MPEGVideo"), path, QString())
                        .endsWith(QStringLiteral("\r\r") + explanation))
            << length;
    }
}
