#include "player/albumcover.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <gtest/gtest.h>

namespace {

// An MP3 that carries its cover in an ID3v2.3 APIC frame.
QByteArray mp3WithPicture(const QByteArray &image)
{
    const QByteArray apic = QByteArray("\0image/png\0\x03\0", 13) + image;
    const QByteArray frames = "APIC" + be32(quint32(apic.size())) + QByteArray(2, '\0') + apic;
    QByteArray size(4, '\0');
    for (int i = 0; i < 4; ++i)
        size[i] = char((frames.size() >> (21 - 7 * i)) & 0x7F);
    return "ID3" + QByteArray("\x03\0\0", 3) + size + frames + QByteArray(400, '\x55');
}

struct Recorder
{
    QList<QRgb> colours; // top-left pixel of each picture shown; 0 for a clear
    explicit Recorder(AlbumCover &cover)
    {
        cover.show = [this](const QImage &picture, const QString &) {
            colours << (picture.isNull() ? 0u : picture.pixel(0, 0));
        };
    }
};

} // namespace

// The picture shown for m/song.mp3 whose tag names an album and an artist:
// first by the tag's names (BMP, GIF, JPG in any letter case; the album, then
// the artist's names for it, the last found wins), then the playlist's, then
// the song's own (embedded, then beside it), then the default picture.
TEST(LoadTagCover, TriesTheTagsNamesThenThePlaylistThenTheSongsOwnThenTheDefault)
{
    // Pictures written ("a|b"), album, artist, a picture embedded in the song, the one shown.
    const std::tuple<const char *, QString, const char *, bool, const char *> cases[] = {
        {"m/Album.BMP|m/Album.GIF|m/Album.JPG", "Album", "", false, "m/Album.BMP"},
        {"m/Album.GIF|m/Album.JPG", "Album", "", false, "m/Album.GIF"},
        {"m/ALBUM.bmp|m/Album.JPG", "Album", "", false, "m/ALBUM.bmp"}, // any case, BMP first
        {"m/album.gif|m/Album.GIF", "Album", "", false, "m/Album.GIF"}, // exact case first
        {"m/Blue.BMP|m/Band - Blue.JPG", "Blue", "Band", false, "m/Band - Blue.JPG"},
        {"m/Blue.BMP|m/Band-Blue.GIF", "Blue", "Band", false, "m/Band-Blue.GIF"},
        {"m/Band - Blue.JPG", QStringLiteral("Blue") + QChar(0) + QChar(0) + "   ", "Band    ",
         false, "m/Band - Blue.JPG"},
        {"m/Band - Blue.JPG|m/Cover.JPG|lists/party.gif", "Blue", "Band", true,
         "m/Band - Blue.JPG"},
        // No album: nothing by the artist alone.
        {"m/Band.BMP|m/Cover.JPG|lists/party.gif", "", "Band", true, "lists/party.gif"},
        {"m/Album.png|m/Cover.JPG", "Album", "", true, "m/song.mp3"},
        {"m/Cover.JPG", "Blue", "Band", false, "m/Cover.JPG"},
        {"", "Blue", "Band", false, "velto/NoCover.BMP"},
    };
    for (const auto &[files, album, artist, embedded, shown] : cases) {
        SCOPED_TRACE(files);
        TempHome home;
        home.write("velto/NoCover.BMP", picture(0xffddeeff, "BMP"));
        const QString song = home.write("m/song.mp3", embedded ? mp3WithPicture(picture(0xff445566))
                                                               : QByteArray(600, '\x55'));
        for (const QString &f : QString::fromLatin1(files).split('|', Qt::SkipEmptyParts))
            home.write(f, picture(0xff112233));
        AlbumCover cover(home.file("velto/nocover.bmp"));
        Recorder pictures(cover);
        cover.PlaylistLoaded(home.file("lists/party.m3u"));
        cover.LoadCover(QString()); // a track starts with no picture yet
        cover.LoadTagCover(home.file("m"), album, QString::fromLatin1(artist), song);
        EXPECT_EQ(cover.CoverFile, home.file(QString::fromLatin1(shown)));
        ASSERT_FALSE(pictures.colours.isEmpty());
        EXPECT_NE(pictures.colours.last(), 0u);
    }
}

// With the tag rules off an item's own picture still shows, and gives way to
// the default picture on the next item; a picture the user chose stays.
TEST(TrackCover, AnItemsOwnPictureCountsWithoutTheTagRules)
{
    const QRgb embedded = 0xff445566, chosen = 0xff223344;
    TempHome home;
    home.write("velto/nocover.bmp", picture(0xffddeeff, "BMP"));
    const QString with = home.write("m/with.mp3", mp3WithPicture(picture(embedded)));
    const QString without = home.write("m/without.mp3", QByteArray(600, '\x55'));
    const QString mine = home.write("mine.bmp", picture(chosen, "BMP"));
    AlbumCover cover(home.file("velto/nocover.bmp"));
    Recorder shown(cover);

    cover.LoadCover(mine);
    cover.TrackCover(without);
    EXPECT_EQ(cover.CoverFile, mine) << "the user's picture stays";
    cover.TrackCover(with);
    EXPECT_EQ(cover.CoverFile, with);
    EXPECT_EQ(shown.colours.last(), embedded);
    cover.TrackCover(without);
    EXPECT_EQ(cover.CoverFile, home.file("velto/nocover.bmp")) << "not the last item's picture";
}

TEST(LoadCover, ShowsOnceClearsOnACorruptFileOrAClearedPlaylist)
{
    TempHome home;
    const QString good = home.write("p/Front.BMP", picture(0xff102030, "BMP"));
    const QString corrupt = home.write("p/broken.jpg", QByteArray("\xFF\xD8\xFF\xE0 not really"));
    home.write("p/Back.GIF", picture(0xff405060));
    AlbumCover cover;
    Recorder shown(cover);

    cover.LoadCover(good);
    cover.LoadCover(good);
    ASSERT_EQ(shown.colours.size(), 1) << "the same cover is not read again";
    EXPECT_EQ(cover.CoverFile, good);

    cover.LoadCover(corrupt);
    EXPECT_EQ(shown.colours.last(), 0u);
    EXPECT_TRUE(cover.CoverFile.isEmpty());

    cover.LoadCover(home.file("p/Back")); // no extension: FindCover supplies .GIF
    EXPECT_EQ(shown.colours.last(), 0xff405060u);
    EXPECT_EQ(cover.CoverFile, home.file("p/Back.GIF"));

    // Clearing the playlist forgets its picture.
    home.write("l/Mix.BMP", picture(0xff0000ff, "BMP"));
    cover.PlaylistLoaded(home.file("l/Mix.m3u"));
    EXPECT_EQ(shown.colours.last(), 0xff0000ffu);
    cover.PlaylistCleared();
    EXPECT_EQ(shown.colours.last(), 0u);
    EXPECT_TRUE(cover.PlaylistCover.isEmpty());
    EXPECT_TRUE(cover.CoverFile.isEmpty());
}
