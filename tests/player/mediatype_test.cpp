#include "player/mediatype.h"
#include "support/printers.h"

#include <gtest/gtest.h>

// The engine plays a module, a picture and a document; here the rules around the table.
TEST(MediaType, ClassifiesByExtensionInOrder)
{
    using K = MediaType::Kind;
    const std::tuple<const char *, const char *, K, const char *> cases[] = {
        {"/m/a.MP2", "1", K::Mpeg, "MPEGVideo2"},
        {"/m/a.mpa", "2", K::Mpeg, "ActiveMovie"},
        {"/m/a.mp3", "", K::Mpeg, "ActiveMovie"},
        {"/m/a.fli", "1", K::Animation, "Animation"},
        {"/cd/Track01.cda", "0", K::CdTrack, "cdaudio"},
        {"/rips/Album.Cue", "0", K::DiscImage, "cdaudio"},
        {"/m/a.Gif", "0", K::Picture, "Delay"},
        {"/m/a.mid", "x", K::Other, "ActiveMovie"},
        // Only the text after the last dot counts, even inside a folder name.
        {"/m.mp3/song", "0", K::Other, "MPEGVideo"},
        {"/m/a.mp3.txt", "0", K::Placeholder, "Delay"},
        {"", "0", K::Other, "MPEGVideo"},
    };
    for (const auto &[path, setting, kind, device] : cases) {
        const MediaType type = classifyMedia(QString::fromUtf8(path), QString::fromUtf8(setting));
        EXPECT_EQ(type.kind, kind) << path;
        EXPECT_EQ(type.device, QString::fromUtf8(device)) << path;
    }
}

TEST(MediaType, CdTrackNumberComesFromTheLastSixCharactersAndTheExtensionIsUpperCased)
{
    const std::pair<const char *, int> cases[] = {
        {"/cd/track12.CDA", 12}, {"/cd/Track05.cda", 5}, {"x.cda", 0}, {"/cd/Trackab.cda", 0}};
    for (const auto &[path, track] : cases)
        EXPECT_EQ(classifyMedia(QString::fromUtf8(path), QStringLiteral("0")).cdTrack, track)
            << path;
    // The extension shown: upper case, or the whole text without a dot.
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b.Mp3")), QStringLiteral("MP3"));
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b")), QStringLiteral("/A/B"));
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b.")), QString());
}
