#include "app/frmneorb.h"
#include "skin/skinlightwidget.h"
#include "skin/skinlistarea.h"

#include "support/discimage.h"
#include "support/loopbackserver.h"
#include "support/shippedwindow.h"

#include <QFile>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// The real program on the shipped player skin with a disc image of three
// tracks, silent, and a CDDB server of the test's own.
class CdMode : public ::testing::Test, protected ShippedWindow
{
protected:
    CdMode()
        : server([this](const std::string &target) {
              const bool read = target.find("cddb+read") != std::string::npos;
              return LoopbackServer::Response{200, read ? readReply : queryReply, false};
          })
    {
        qputenv("VELTO_AUDIO", "null");
        disc.sectors = {150, 225, 300};
        store.values["config/cddbcmd"] = server.url("/~cddb/cddb.cgi/?cmd=");
        store.values["config/usecddb"] = "0";
        // Whatever drive the machine has, the tests play their own images.
        store.values["config/cddrive"] = home.file(QStringLiteral("no-drive"));
        music = home.write(QStringLiteral("music/song.wav"), QByteArray(1000, '\0'));
    }
    ~CdMode() override { qunsetenv("VELTO_AUDIO"); }

    QString image() { return disc.write(home.file(QStringLiteral("discs")), "disc"); }
    QStringList shownNames()
    {
        QStringList names;
        SkinListArea *list = window->skin().list(1);
        for (int row = 0; list && row < list->count(); ++row)
            names << list->item(row)->text();
        return names;
    }
    bool lightShown(int n) const
    {
        const SkinLightWidget *light = window->skin().light(n);
        return light && light->isVisibleTo(window);
    }

    DiscImage disc;
    std::string queryReply = "202 No match\r\n", readReply;
    LoopbackServer server;
    QString music;
};

} // namespace

TEST_F(CdMode, ACueOnTheCommandLinePlaysTheDiscAndCommand37GoesBackToTheFiles)
{
    start({music, image()}, true);
    EXPECT_TRUE(dialogs.messages.isEmpty()) << dialogs.messages.join('|').toStdString();
    EXPECT_TRUE(velto->cd().cdMode());
    EXPECT_EQ(shownNames(), (QStringList{"01 - Track  1  (00:02)", "02 - Track  2  (00:03)",
                                         "03 - Track  3  (00:04)"}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return velto->player().state().PlayPos > 0; }, 15000));
    EXPECT_EQ(velto->player().state().CurDevice, QStringLiteral("cdaudio"));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("01 - Track  1  (00:02)"));
    EXPECT_TRUE(lightShown(15)) << "the CD light";
    EXPECT_FALSE(lightShown(22)) << "not the media files' light";
    EXPECT_EQ(window->skin().label(26), QStringLiteral("CD"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->skin().label(15) == "Playing"; }));

    velto->DoIt(37);
    EXPECT_FALSE(velto->cd().cdMode());
    EXPECT_FALSE(velto->player().state().playing);
    EXPECT_EQ(velto->playlist().PlPath, QStringList{music}) << "the files came back";
    EXPECT_EQ(shownNames().size(), 1);
    EXPECT_TRUE(lightShown(22));
    EXPECT_EQ(window->skin().label(26), QStringLiteral("Media"));
}

TEST_F(CdMode, FilesBroughtInCdModeJoinTheMediaFiles)
{
    start();
    velto->player().addOpened(image());
    ASSERT_TRUE(velto->cd().cdMode());
    const QString other = home.write(QStringLiteral("music/other.wav"), QByteArray(100, '\0'));
    emit window->filesDropped({other});
    EXPECT_FALSE(velto->cd().cdMode());
    EXPECT_EQ(velto->playlist().PlPath, QStringList{other});
}

// Shut down in CD mode, and the next start finds the files' playlist.
TEST_F(CdMode, TheFilesPlaylistIsTheOneSaved)
{
    start();
    velto->player().addOpened(music);
    velto->player().addOpened(image());
    ASSERT_TRUE(velto->cd().cdMode());
    velto->Unload(false);
    QFile saved(home.file(QStringLiteral("data/velto/playlist.m3u")));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    const QByteArray list = saved.readAll();
    EXPECT_TRUE(list.contains("song.wav")) << list.constData();
    EXPECT_FALSE(list.contains("cdtrack")) << list.constData();
}

TEST_F(CdMode, NamesFromCddbReachTheListAndTheTitleOfTheTrackPlaying)
{
    store.values["config/usecddb"] = "1";
    queryReply = "200 misc " + disc.cddbId().toStdString() + " Trio / Tones\r\n";
    readReply = "210 misc follows\r\nDTITLE=Trio / Tones\r\nTTITLE0=Low\r\nTTITLE1=Middle\r\n"
                "TTITLE2=High\r\n.\r\n";
    start();
    velto->player().addOpened(image());
    ASSERT_TRUE(QTest::qWaitFor([&] { return velto->cd().titlesLoaded(); }));
    EXPECT_EQ(shownNames(),
              (QStringList{"01 - Low  (00:02)", "02 - Middle  (00:03)", "03 - High  (00:04)"}));
    EXPECT_EQ(window->skin().label(2), QStringLiteral("Trio - Tones"));
    velto->DoIt(15); // next: track 2
    ASSERT_TRUE(QTest::qWaitFor([&] { return velto->player().state().PlayPos > 0; }, 15000));
    EXPECT_EQ(window->windowTitle(), QStringLiteral("02 - Middle  (00:03)"));
    EXPECT_EQ(server.requests().size(), 2u);
}

TEST_F(CdMode, EjectTakesTheDiscOutOfTheList)
{
    start();
    velto->player().addOpened(image());
    ASSERT_EQ(shownNames().size(), 3);
    velto->DoIt(13);
    EXPECT_TRUE(shownNames().isEmpty());
    EXPECT_TRUE(velto->cd().cdMode());
    EXPECT_EQ(window->skin().label(15), QStringLiteral("No Disc"));
    EXPECT_EQ(dialogs.messages.size(), 0) << "a drive at /dev/cdrom or not, eject says nothing";
}
