#include "app/frmneorb.h"

#include "support/discimage.h"
#include "support/shippedwindow.h"

#include <QFile>
#include <gtest/gtest.h>

namespace {

// The real program on the shipped player skin with a disc image of three
// tracks, silent. Playing and naming the tracks is the CD part's and the
// end-to-end test's; here, how CD mode meets the media files.
class CdMode : public ::testing::Test, protected ShippedWindow
{
protected:
    CdMode()
    {
        qputenv("VELTO_AUDIO", "null");
        disc.sectors = {150, 225, 300};
        store.values["config/usecddb"] = "0";
        // Whatever drive the machine has, the tests play their own images.
        store.values["config/cddrive"] = home.file(QStringLiteral("no-drive"));
        music = home.write(QStringLiteral("music/song.wav"), QByteArray(1000, '\0'));
    }
    ~CdMode() override { qunsetenv("VELTO_AUDIO"); }

    QString image() { return disc.write(home.file(QStringLiteral("discs")), "disc"); }

    DiscImage disc;
    QString music;
};

} // namespace

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
