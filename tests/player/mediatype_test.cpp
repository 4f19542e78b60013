#include "player/mediatype.h"
#include "support/printers.h"

#include <gtest/gtest.h>

// The engine plays a module, a picture and a document; here the rules around the table.
TEST(MediaType, ClassifiesByExtensionInOrderAndReadsTheCdTrackFromTheLastSixCharacters)
{
    using K = MediaType::Kind;
    const std::tuple<const char *, const char *, K, const char *, int> cases[] = {
        {"/m/a.MP2", "1", K::Mpeg, "MPEGVideo2", 0},
        {"/m/a.mpa", "2", K::Mpeg, "ActiveMovie", 0},
        {"/m/a.mp3", "", K::Mpeg, "ActiveMovie", 0},
        {"/m/a.fli", "1", K::Animation, "Animation", 0},
        {"/cd/Track05.cda", "0", K::CdTrack, "cdaudio", 5},
        {"/cd/track12.CDA", "0", K::CdTrack, "cdaudio", 12},
        {"/rips/Album.Cue", "0", K::DiscImage, "cdaudio", 0},
        {"/m/a.Gif", "0", K::Picture, "Delay", 0},
        {"/m/a.mid", "x", K::Other, "ActiveMovie", 0},
        // Only the text after the last dot counts, even inside a folder name.
        {"/m.mp3/song", "0", K::Other, "MPEGVideo", 0},
        {"/m/a.mp3.txt", "0", K::Placeholder, "Delay", 0},
    };
    for (const auto &[path, setting, kind, device, track] : cases) {
        SCOPED_TRACE(path);
        const MediaType type = classifyMedia(QString::fromUtf8(path), QString::fromUtf8(setting));
        EXPECT_EQ(type.kind, kind);
        EXPECT_EQ(type.device, QString::fromUtf8(device));
        EXPECT_EQ(type.cdTrack, track);
    }
    // The extension shown: upper case, or the whole text without a dot.
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b.Mp3")), QStringLiteral("MP3"));
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b")), QStringLiteral("/A/B"));
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b.")), QString());
}
