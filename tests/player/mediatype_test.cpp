#include "player/mediatype.h"
#include "support/printers.h"

#include <gtest/gtest.h>

TEST(MediaType, ClassifiesByExtensionInOrder)
{
    using K = MediaType::Kind;
    struct Case
    {
        const char *path;
        const char *setting;
        K kind;
        const char *device;
    };
    const Case cases[] = {
        {"/m/a.mp3", "0", K::Mpeg, "MPEGVideo"},
        {"/m/a.MP2", "1", K::Mpeg, "MPEGVideo2"},
        {"/m/a.mpa", "2", K::Mpeg, "ActiveMovie"},
        {"/m/a.mp3", "", K::Mpeg, "ActiveMovie"},
        {"/m/a.mod", "0", K::Module, "M4W_MCI"},
        {"/m/a.669", "0", K::Module, "M4W_MCI"},
        {"/m/a.Xm", "0", K::Module, "M4W_MCI"},
        {"/m/a.fli", "1", K::Animation, "Animation"},
        {"/m/a.FLC", "0", K::Animation, "Animation"},
        {"/m/a.awm", "0", K::Animation1, "Animation1"},
        {"/m/a.mmm", "0", K::MMMovie, "MMMovie"},
        {"/cd/Track01.cda", "0", K::CdTrack, "cdaudio"},
        {"/m/a.jpg", "0", K::Picture, "Delay"},
        {"/m/a.Gif", "0", K::Picture, "Delay"},
        {"/m/readme.txt", "0", K::Placeholder, "Delay"},
        {"/m/setup.exe", "0", K::Placeholder, "Delay"},
        {"/m/link.lnk", "0", K::Placeholder, "Delay"},
        {"/m/a.wav", "0", K::Other, "MPEGVideo"},
        {"/m/a.flac", "1", K::Other, "MPEGVideo2"},
        {"/m/a.mid", "x", K::Other, "ActiveMovie"},
        {"/m/noextension", "0", K::Other, "MPEGVideo"},
        // Only the text after the last dot counts, even inside a folder name.
        {"/m.mp3/song", "0", K::Other, "MPEGVideo"},
        {"/m/a.mp3.txt", "0", K::Placeholder, "Delay"},
        {"", "0", K::Other, "MPEGVideo"},
    };
    for (const Case &c : cases) {
        const MediaType type =
            classifyMedia(QString::fromUtf8(c.path), QString::fromUtf8(c.setting));
        EXPECT_EQ(type.kind, c.kind) << c.path;
        EXPECT_EQ(type.device, QString::fromUtf8(c.device)) << c.path;
    }
}

TEST(MediaType, CdTrackNumberComesFromTheLastSixCharacters)
{
    const std::pair<const char *, int> cases[] = {
        {"/cd/Track01.cda", 1},
        {"/cd/Track05.cda", 5},
        {"/cd/track12.CDA", 12},
        {"/cd/Track99.cda", 99},
        {"x.cda", 0},
        {"/cd/Trackab.cda", 0},
        {".cda", 0},
    };
    for (const auto &[path, track] : cases)
        EXPECT_EQ(classifyMedia(QString::fromUtf8(path), QStringLiteral("0")).cdTrack, track)
            << path;
}

TEST(MediaType, ExtensionIsUpperCasedOrTheWholeText)
{
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b.Mp3")), QStringLiteral("MP3"));
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b")), QStringLiteral("/A/B"));
    EXPECT_EQ(mediaExtension(QStringLiteral("/a/b.")), QString());
}
