#include "app/frmneorb.h"
#include "core/settings.h"
#include "player/frmalbum.h"
#include "player/frminfo.h"
#include "player/mp3info.h"
#include "player/playlist.h"
#include "player/trackinfo.h"
#include "skin/skinareawidget.h"
#include "skin/skinlistarea.h"
#include "skin/skinloader.h"

#include "support/shippedwindow.h"
#include "support/testbytes.h"

#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// The real skin loader on a plain window, the shipped skins, scripted dialogs.
struct Rig
{
    explicit Rig(const char *skin)
    {
        loader.LoadSkin(QStringLiteral(VELTO_DATA_DIR "/skins/") + QLatin1String(skin));
        QObject::connect(&info, &TrackInfo::lyricsChanged, &info, [this] { ++lightsChanged; });
        QObject::connect(&info, &TrackInfo::seekWanted, &info, [this](qint64 ms) { seeks << ms; });
    }

    TempHome home;
    FakeDialogs dialogs;
    FakeClock clock;
    QWidget window;
    SkinLoader loader{window, dialogs, clock};
    Settings settings;
    PlaylistState playlist;
    TrackInfo info{
        {loader,
         dialogs,
         {settings.UseTagCover, settings.AutoCover, settings.FriendlyNames, settings.Path},
         playlist,
         home.file("velto/nocover.bmp"),
         &window}};
    int lightsChanged = 0;
    QList<qint64> seeks;
};

class MainWindowCover : public ::testing::Test, protected ShippedWindow
{
};

} // namespace

TEST(TrackInfo, KaraokeSkinShowsFrameInformationAndFollowsTheWords)
{
    Rig rig("karaoke.skin");
    const QString song = rig.home.write("m/song.mp3", audio(2000));
    rig.home.write("m/SONG.LYR", "VELTO LYRIC\n:000001000: one\n:000002000: two\n");

    rig.info.ShowMp3Info(GetMP3Info(song));
    EXPECT_EQ(rig.loader.label(10), "128");
    EXPECT_EQ(rig.loader.label(11), "44");
    EXPECT_EQ(rig.loader.label(12), "jstereo");

    rig.info.TrackStarted(song);
    SkinListArea *words = rig.loader.list(4);
    ASSERT_EQ(words->count(), 2);
    EXPECT_TRUE(rig.info.lyricsLoaded());
    EXPECT_EQ(rig.lightsChanged, 1);
    rig.info.Tick(2100);
    EXPECT_EQ(words->currentRow(), 1);

    emit words->itemDoubleClicked(words->item(0));
    EXPECT_EQ(rig.seeks, QList<qint64>{1000});
}

TEST(TrackInfo, CoverReachesTheSkinAndTheAlbumWindow)
{
    Rig rig("default.skin");
    rig.settings.AutoCover = 1;
    const QString blue = rig.home.write("m/Blue.GIF", picture(0xff0000ff));
    rig.info.LoadCover(blue);
    SkinAreaWidget *area = rig.loader.area(1);
    EXPECT_EQ(area->picture().pixel(0, 0), 0xff0000ffu);
    ASSERT_TRUE(rig.info.albumWindow() && rig.info.albumWindow()->isVisible())
        << "AutoCover opens the album window";

    // The album window's picture goes to the track information window.
    rig.info.ShowTrackInfo();
    QLabel *infoCover = rig.info.infoWindow()->findChild<QLabel *>("imgCover");
    rig.info.infoWindow()->setPicture(QImage());
    frmAlbum *album = rig.info.albumWindow();
    QTest::mouseDClick(album, Qt::LeftButton, {}, album->pictureRect().center());
    EXPECT_FALSE(infoCover->pixmap().isNull());

    // Double-clicking the cover area picks a picture.
    const QString red = rig.home.write("m/red.png", picture(0xffff0000));
    rig.dialogs.openResults.push_back({red});
    emit rig.loader.area(1)->doubleClicked(1);
    EXPECT_EQ(rig.dialogs.calls.last().title, "Select Cover");
    EXPECT_EQ(rig.info.cover().CoverFile, red);
    EXPECT_EQ(album->picture().pixel(0, 0), 0xffff0000u);
}

TEST(TrackInfo, InformationWindowOpensForThePlayingOrSelectedEntry)
{
    Rig rig("default.skin");
    const QString a = rig.home.write("m/a.mp3", audio(2000));
    const QString b = rig.home.write("m/b.mp3", audio(2000));
    rig.playlist.PlNames = {"a", "b"};
    rig.playlist.PlPath = {a, b};
    rig.playlist.CurTrack = 1;
    rig.loader.list(1)->addItems(rig.playlist.PlNames);
    rig.loader.list(1)->setCurrentRow(1);
    rig.info.setCurrentFile(QString());

    rig.info.ShowTrackInfo();
    auto shown = [&] {
        return rig.info.infoWindow()->findChild<QLineEdit *>("txtFileName")->text();
    };
    EXPECT_EQ(shown(), b) << "nothing plays: the selected entry";
    rig.info.setCurrentFile(a);
    rig.info.ShowTrackInfo();
    EXPECT_EQ(shown(), a);
}

TEST_F(MainWindowCover, RestoresTheCoverAndOpensTheAlbumWindow)
{
    const QString last = home.write("m/Last.BMP", picture(0xff00ffff));
    store.values["config/lastcover"] = last;
    store.values["config/startmd"] = "1"; // start with the last playlist and cover
    start();
    showFirstFrame(); // the cover waits for the window to be on screen
    ASSERT_FALSE(window->skin().area(1)->picture().isNull()) << "the cover shown at the last quit";

    velto->DoIt(16);
    frmAlbum *album = window->findChild<frmAlbum *>();
    ASSERT_TRUE(album && album->isVisible());
    EXPECT_EQ(album->picture().pixel(0, 0), 0xff00ffffu);
    EXPECT_TRUE(dialogs.messages.isEmpty()) << dialogs.messages.join('|').toStdString();
}
