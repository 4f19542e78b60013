#include "player/mediaerror.h"
#include "support/printers.h"

#include <gtest/gtest.h>

// The texts for the errors a real device gives are checked in playbackengine_test.
TEST(MediaErrorMessage, ExplainsEachErrorNumberAndTheLengthRule)
{
    const std::tuple<int, const char *, const char *> cases[] = {
        {264, "MPEGVideo", "Out of memory."},
        {274, "MPEGVideo2", "Try installing the latest MS MediaPlayer (formerly ActiveMovie)."},
        {275, "MPEGVideo", "Unhandled Velto error\rFilename: /m/a.mp3"},
        {0, "MPEGVideo", "Unhandled Velto error\rFilename: /m/a.mp3"},
    };
    for (const auto &[error, device, explanation] : cases) {
        const QString expected = QStringLiteral("MCI Device: ") + QString::fromUtf8(device) +
                                 QStringLiteral("\rFilename: /m/a.mp3\r\rError: it failed\r\r") +
                                 QString::fromUtf8(explanation);
        EXPECT_EQ(mediaErrorMessage(error, QString::fromUtf8(device), QStringLiteral("/m/a.mp3"),
                                    QStringLiteral("it failed")),
                  expected)
            << error << " " << device;
    }

    // Out of memory becomes the length rule after 98 characters with the label.
    const QString tooLong = QStringLiteral("The filename and path must be 98 characters or less!");
    // "Filename: " is ten characters: an 88-character path is the longest that passes.
    for (const auto &[length, explanation] :
         {std::pair{88, QStringLiteral("Out of memory.")}, std::pair{89, tooLong}}) {
        const QString path = QStringLiteral("/") + QString(length - 1, QLatin1Char('a'));
        EXPECT_TRUE(mediaErrorMessage(264, QStringLiteral("MPEGVideo"), path, QString())
                        .endsWith(QStringLiteral("\r\r") + explanation))
            << length;
    }
}
