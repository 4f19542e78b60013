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
    QStringList hints;
    QList<QRgb> colours; // top-left pixel of each picture shown; 0 for a clear
    explicit Recorder(AlbumCover &cover)
    {
        cover.show = [this](const QImage &picture, const QString &hint) {
            hints << hint;
            colours << (picture.isNull() ? 0u : picture.pixel(0, 0));
        };
    }
};

} // namespace

// Files are written into one folder ("a|b"); an empty expectation means none
// found. With an artist the candidates are the tag's names, and the last found wins.
TEST(FindCover, TriesBmpGifJpgInAnyLetterCaseAndByTagTheLastFoundWins)
{
    const std::tuple<const char *, QString, const char *, const char *> cases[] = {
        {"Album.BMP|Album.GIF|Album.JPG", "Album", nullptr, "Album.BMP"},
        {"Album.GIF|Album.JPG", "Album", nullptr, "Album.GIF"},
        // Any case of bmp before an exact jpg.
        {"ALBUM.bmp|Album.JPG", "Album", nullptr, "ALBUM.bmp"},
        {"album.gif|Album.GIF", "Album", nullptr, "Album.GIF"}, // exact case first
        {"Album.JPG", "  Album  ", nullptr, "Album.JPG"},
        {"Album.png", "Album", nullptr, ""},
        {"Blue.BMP|Band - Blue.JPG", "Blue", "Band", "Band - Blue.JPG"},
        {"Blue.BMP|Band-Blue.GIF", "Blue", "Band", "Band-Blue.GIF"},
        {"Band.BMP", "", "Band", ""}, // no album: nothing by the artist alone
        {"Band - Blue.JPG", QStringLiteral("Blue") + QChar(0) + QChar(0) + "   ", "Band    ",
         "Band - Blue.JPG"},
        {"band - blue.jpg", "BLUE", "BAND", "band - blue.jpg"},
    };
    for (const auto &[files, base, artist, expected] : cases) {
        SCOPED_TRACE(files);
        TempHome home;
        for (const QString &f : QString::fromLatin1(files).split('|'))
            home.write(QStringLiteral("m/") + f, "x");
        const QString folder = home.file("m/");
        const QString found =
            artist
                ? AlbumCover::tagCover(folder, base, QString::fromLatin1(artist))
                : AlbumCover::FindCover(base.startsWith(' ') ? "  " + folder + base.trimmed() + "  "
                                                             : folder + base);
        EXPECT_EQ(found, *expected ? home.file(QStringLiteral("m/") + expected) : QString());
    }
}

TEST(LoadTagCover, FallsBackOnPlaylistEmbeddedBesideThenDefaultPicture)
{
    const QRgb tagColour = 0xff112233, embedded = 0xff445566, beside = 0xff778899,
               playlist = 0xffaabbcc, fallback = 0xffddeeff;
    // Pictures present: by the tag's names, embedded, beside the song, beside the
    // playlist; and the colour shown.
    const std::tuple<const char *, bool, bool, bool, bool, QRgb> cases[] = {
        {"tag picture first", true, true, true, true, tagColour},
        {"a picture file before the item's own", false, true, true, true, playlist},
        {"embedded before beside", false, true, true, false, embedded},
        {"cover.jpg beside", false, false, true, false, beside},
        {"default picture", false, false, false, false, fallback},
    };
    for (const auto &[what, tagPicture, embeddedPicture, besidePicture, playlistPicture, expected] :
         cases) {
        SCOPED_TRACE(what);
        TempHome home;
        home.write("velto/NoCover.BMP", picture(fallback, "BMP"));
        const QString song =
            home.write("m/song.mp3", embeddedPicture ? mp3WithPicture(picture(embedded))
                                                     : QByteArray(600, '\x55'));
        if (tagPicture)
            home.write("m/Band - Blue.JPG", picture(tagColour, "JPG"));
        if (besidePicture)
            home.write("m/Cover.JPG", picture(beside, "PNG"));
        AlbumCover cover(home.file("velto/nocover.bmp"));
        Recorder shown(cover);
        if (playlistPicture) {
            home.write("lists/party.gif", picture(playlist));
            cover.PlaylistLoaded(home.file("lists/party.m3u"));
            ASSERT_EQ(cover.PlaylistCover, home.file("lists/party.gif"));
            cover.LoadCover(QString()); // a track starts with no picture yet
        }
        cover.LoadTagCover(home.file("m"), "Blue", "Band", song);
        ASSERT_FALSE(shown.colours.isEmpty());
        // JPEG blurs colours a little.
        const QRgb got = shown.colours.last();
        EXPECT_NEAR(qRed(got), qRed(expected), 6);
        EXPECT_NEAR(qGreen(got), qGreen(expected), 6);
        EXPECT_NEAR(qBlue(got), qBlue(expected), 6);
        EXPECT_FALSE(cover.CoverFile.isEmpty());
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
    EXPECT_EQ(shown.hints.last(), "Front.BMP");
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
