#include "platform/streamtext.h"

#include "support/printers.h"

#include <gtest/gtest.h>

TEST(StreamText, DecodesCleansAndCutsWhatAStreamSays)
{
    const struct
    {
        QByteArray bytes;
        QString text;
    } cases[] = {
        {"Artist - Title", QStringLiteral("Artist - Title")},
        {"Caf\xC3\xA9", QStringLiteral("Caf\u00e9")},                     // UTF-8
        {"Caf\xE9", QStringLiteral("Caf\u00e9")},                         // Latin-1
        {"\xC3\xA9 and \xE9", QStringLiteral("\u00c3\u00a9 and \u00e9")}, // not UTF-8 as a whole
        {"Tab\there\r\nnext\x1b[0m", QStringLiteral("Tab here next [0m")},
        {"  padded  ", QStringLiteral("padded")},
        {"\x80\x9f", QString()}, // Latin-1 C1 controls
    };
    for (const auto &c : cases)
        EXPECT_EQ(streamText(c.bytes), c.text) << c.bytes.toStdString();

    EXPECT_EQ(streamText(QByteArray(4096, 'a')).size(), kMaxStreamText);
    QByteArray emoji;
    for (int i = 0; i < 200; ++i)
        emoji += "\xF0\x9F\x8E\xB5"; // a note, two UTF-16 units each
    const QString cut = streamText(emoji);
    EXPECT_LE(cut.size(), kMaxStreamText);
    EXPECT_FALSE(cut.back().isHighSurrogate()) << "never half a character";
}

TEST(StreamText, KnowsNetworkAddresses)
{
    EXPECT_TRUE(isNetworkAddress(QStringLiteral("http://a/b")));
    EXPECT_TRUE(isNetworkAddress(QStringLiteral("HTTPS://a/b")));
    EXPECT_FALSE(isNetworkAddress(QStringLiteral("/music/http://x")));
    EXPECT_FALSE(isNetworkAddress(QStringLiteral("file:///x.mp3")));
    EXPECT_FALSE(isNetworkAddress(QStringLiteral("C:\\http.mp3")));
}
