#include "radio/streamplaylist.h"

#include "support/printers.h"

#include <gtest/gtest.h>

TEST(StreamPlaylist, ReadsPlsAndM3uEntriesInOrder)
{
    const QUrl base(QStringLiteral("http://radio.example/listen/station.pls"));
    const struct
    {
        const char *what;
        QByteArray bytes;
        QStringList entries;
    } cases[] = {
        {"PLS, by number",
         "[playlist]\r\nNumberOfEntries=2\r\nFile2=http://b.example/2\r\nTitle1=One\r\n"
         "File1=http://a.example/1\r\nLength1=-1\r\n",
         {"http://a.example/1", "http://b.example/2"}},
        {"PLS keys in any case, blanks around",
         "[Playlist]\nfile1 = http://a.example/x\nFILE3=\nFile7=https://c.example/y\n",
         {"http://a.example/x", "https://c.example/y"}},
        {"M3U with comments",
         "#EXTM3U\n#EXTINF:-1,Station\nhttp://a.example/stream\n\n  http://b.example/ \n",
         {"http://a.example/stream", "http://b.example/"}},
        {"relative entries",
         "/mount.mp3\nother.aac\n",
         {"http://radio.example/mount.mp3", "http://radio.example/listen/other.aac"}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(streamPlaylistEntries(c.bytes, base), c.entries) << c.what;

    QByteArray many;
    for (int i = 0; i < 1000; ++i)
        many += "http://a.example/" + QByteArray::number(i) + "\n";
    EXPECT_EQ(streamPlaylistEntries(many, base).size(), kMaxStreamPlaylistEntries);
}

TEST(StreamPlaylist, TellsPlaylistAddressesAndStationPlaylists)
{
    const std::pair<const char *, bool> addresses[] = {
        {"http://a.example/listen.pls", true},
        {"https://a.example/x.M3U?sid=1", true},
        {"http://a.example/stream.mp3", false},
        {"http://a.example/live.m3u8", false},
        {"/home/me/x.pls", false},
    };
    for (const auto &[address, playlist] : addresses)
        EXPECT_EQ(isStreamPlaylistAddress(QString::fromUtf8(address)), playlist) << address;

    const QUrl local = QUrl::fromLocalFile(QStringLiteral("/home/me/listen.pls"));
    EXPECT_EQ(stationPlaylist("[playlist]\nFile1=http://a.example/s\nFile2=https://b/s\n", local),
              QStringList({"http://a.example/s", "https://b/s"}));
    EXPECT_TRUE(stationPlaylist("http://a.example/s\nsong.mp3\n", local).isEmpty())
        << "a playlist with files of its own stays the player's";
}
