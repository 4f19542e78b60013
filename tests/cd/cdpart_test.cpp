#include "cd/cdpart.h"

#include "platform/httpfetch.h"
#include "platform/linuxcddrive.h"
#include "support/discimage.h"
#include "support/fakes.h"
#include "support/loopbackserver.h"
#include "support/recordingsurface.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>

namespace {

// A drive a test moves through its states by hand: CD drives are hardware
// no test machine has. Its disc is an image of the test's own.
class FakeCdDrive : public CdDrive
{
public:
    Status state = Status::NoDisc;
    QString image; // read as the disc while the state is Disc
    int ejects = 0;

    Status status(const QString &) override { return state; }
    QByteArray discStamp(const QString &) override { return QByteArray(); }
    CdDisc read(const QString &) override
    {
        if (state != Status::Disc) {
            CdDisc none;
            none.problem = QStringLiteral("There is no disc in the drive.");
            return none;
        }
        return real.read(image);
    }
    bool eject(const QString &) override
    {
        ++ejects;
        state = Status::TrayOpen;
        return true;
    }

private:
    LinuxCdDrive real;
};

// The CD part with the settings, skin, dialogs, playlist and engine state it
// reads, and a CDDB server of the test's own.
struct Rig
{
    explicit Rig(CdDrive *fakeDrive = nullptr)
        : server([this](const std::string &target) { return answer(target); }),
          cddbCmd(server.url("/~cddb/cddb.cgi/?cmd=")),
          part(playlist, playback, {useCdp, useCddb, cddbCmd, email, drivePath},
               {skin, dialogs, fakeDrive ? *fakeDrive : drive, http, dir.filePath("cdplayer.ini")})
    {
        disc.sectors = {225, 300, 380};
        playlist.PlNames = {"song one", "song two"};
        playlist.PlPath = {"/music/one.mp3", "/music/two.mp3"};
        playlist.CurTrack = 2;
        playlist.title = "My list";
        QObject::connect(&part, &CdPart::cdModeChanged, [this](bool on) { playback.CDMode = on; });
        QObject::connect(&part, &CdPart::stopRequested, [this] {
            ++stops;
            playback.playing = playback.paused = false;
        });
        QObject::connect(&part, &CdPart::playRequested, [this] {
            ++plays;
            playback.playing = true;
        });
    }

    LoopbackServer::Response answer(const std::string &target)
    {
        if (target.find("cddb+read") != std::string::npos)
            return {200, readReply, false};
        return {200, queryReply, false};
    }

    QString image() { return disc.write(dir.path(), "disc"); }
    void beat(int n = 1)
    {
        for (int i = 0; i < n; ++i)
            part.clockTick(QDateTime());
    }
    QString status() { return skin.labels.value(CdPart::kStatusLabel); }

    QTemporaryDir dir;
    DiscImage disc;
    std::string queryReply = "202 No match\r\n", readReply;
    LoopbackServer server;
    qint16 useCdp = 1, useCddb = 0;
    QString cddbCmd, email = "tester@example.org",
                     drivePath = QStringLiteral("/nonexistent/velto/cdrom");
    RecordingSurface skin;
    FakeDialogs dialogs;
    LinuxCdDrive drive;
    QtHttpFetch http;
    PlaylistState playlist;
    PlaybackState playback;
    int stops = 0, plays = 0;
    CdPart part;
};

} // namespace

TEST(CdPart, WithoutDriveOrImageCdModeSaysSoOnceAndTheFilesWaitAside)
{
    Rig r;
    r.part.DoIt(37);
    EXPECT_TRUE(r.playback.CDMode) << "the engine follows";
    EXPECT_TRUE(r.playlist.PlNames.isEmpty());
    EXPECT_EQ(r.playlist.title, QStringLiteral("Audio CD"));
    EXPECT_EQ(r.status(), QStringLiteral("No Disc"));
    r.beat(12);
    EXPECT_EQ(r.dialogs.messages,
              QStringList{"No CD drive was found at /nonexistent/velto/cdrom.\rChoose the drive "
                          "on the CD page of the preferences, or open a disc image (a .cue "
                          "file)."});

    r.part.DoIt(37);
    EXPECT_FALSE(r.playback.CDMode);
    EXPECT_EQ(r.playlist.PlPath, (QStringList{"/music/one.mp3", "/music/two.mp3"}));
    EXPECT_EQ(r.playlist.CurTrack, 2);
    EXPECT_EQ(r.playlist.title, QStringLiteral("My list"));
    EXPECT_EQ(r.status(), QString());
    r.part.DoIt(37);
    EXPECT_EQ(r.dialogs.messages.size(), 1) << "once a run";
}

TEST(CdPart, AnImageFillsThePlaylistWithItsTracks)
{
    Rig r;
    r.useCdp = 0;
    const QString cue = r.image();
    r.part.OpenImage(cue);
    ASSERT_TRUE(r.part.cdMode());
    EXPECT_EQ(r.dialogs.messages, QStringList());
    EXPECT_EQ(r.part.source(), cue);
    EXPECT_EQ(r.playlist.PlNames, (QStringList{"01 - Track  1  (00:03)", "02 - Track  2  (00:04)",
                                               "03 - Track  3  (00:05)"}));
    ASSERT_EQ(r.playlist.PlPath.size(), 3);
    EXPECT_TRUE(r.playlist.PlPath[1].startsWith("cdtrack://2/"))
        << r.playlist.PlPath[1].toStdString();
    EXPECT_EQ(r.playlist.CurTrack, 1);
    EXPECT_EQ(r.part.table().CDDBId, r.disc.cddbId());
    EXPECT_EQ(r.part.media(), 905);
    EXPECT_EQ(r.status(), QStringLiteral("Stopped"));

    // Writing another disc over the image is what swapping discs is to a drive:
    // the next beat sees the tray go, the one after reads the new disc.
    r.playback.playing = true;
    r.beat();
    EXPECT_EQ(r.status(), QStringLiteral("Playing"));
    r.disc.sectors = {100, 200, 300, 400};
    r.image();
    r.beat();
    EXPECT_EQ(r.status(), QStringLiteral("Ready"));
    EXPECT_EQ(r.stops, 1) << "what played of the old disc stops";
    EXPECT_TRUE(r.playlist.PlNames.isEmpty());
    r.beat();
    EXPECT_EQ(r.status(), QStringLiteral("Stopped"));
    EXPECT_EQ(r.playlist.PlNames.size(), 4);

    ASSERT_TRUE(QFile::remove(cue));
    r.beat();
    EXPECT_EQ(r.status(), QStringLiteral("No Disc"));
    EXPECT_TRUE(r.playlist.PlNames.isEmpty());
}

// The title file, then the disc's CD-Text, then a CDDB server name the tracks.
// A wrong track count in the title file is told; the titles before it stay.
TEST(CdPart, TracksAreNamedByTheTitleFileCdTextOrACddbServer)
{
    const QString kBand = QStringLiteral("The Band - First Album");
    const QStringList kNamed = {"01 - Opening  (00:03)", "02 - Track  2  (00:04)",
                                "03 - Closing  (00:05)"};
    const struct
    {
        const char *what;
        std::function<void(Rig &)> setUp;
        QStringList names;
        QString album, artistLabel, status;
        bool asked;
        QStringList messages = {};
    } cases[] = {
        {"the title file",
         [](Rig &r) {
             QFile ini(r.dir.filePath("cdplayer.ini"));
             EXPECT_TRUE(ini.open(QIODevice::WriteOnly));
             ini.write(
                 "[" + r.disc.cdPlayerId().toLower().toUtf8() +
                 "]\r\nartist=The Band\r\n0=Opening\r\n2=Closing\r\nNUMTRACKS=4\r\n1=Never\r\n");
         },
         kNamed,
         "Audio CD",
         "",
         "Stopped",
         false,
         {"Number of Tracks do not match! ( 3 4)"}},
        {"CD-Text",
         [](Rig &r) {
             r.disc.titles = {"Opening", "", "Closing"};
             r.disc.albumTitle = "First Album";
             r.disc.albumPerformer = "The Band";
         },
         kNamed, "First Album", kBand, "Stopped", false},
        // The last title has no carriage return after it: that track stays unnamed.
        {"a CDDB server",
         [](Rig &r) {
             r.queryReply =
                 "200 rock " + r.disc.cddbId().toStdString() + " The Band / First Album\r\n";
             r.readReply = "210 rock follows\r\nDTITLE=The Band / First Album\r\n"
                           "TTITLE0=Opening\r\nTTITLE1=Middle\r\nTTITLE2=Closing";
         },
         {"01 - Opening  (00:03)", "02 - Middle  (00:04)", "03 - Track  3  (00:05)"},
         "Audio CD",
         kBand,
         "Album data loaded.",
         true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        Rig r;
        r.useCddb = 1;
        c.setUp(r);
        r.part.OpenImage(r.image());
        r.beat(2);
        EXPECT_TRUE(QTest::qWaitFor([&] { return r.status() == c.status; }))
            << r.status().toStdString();
        EXPECT_EQ(r.playlist.PlNames, c.names);
        EXPECT_EQ(r.playlist.title, c.album);
        EXPECT_EQ(r.skin.labels.value(CdPart::kArtistLabel), c.artistLabel);
        EXPECT_EQ(!r.server.requests().empty(), c.asked);
        EXPECT_EQ(r.dialogs.messages, c.messages);
    }
}

TEST(CdPart, ABrokenImageIsToldAndNothingChanges)
{
    Rig r;
    const QString cue = r.image();
    QFile::remove(r.dir.filePath("disc.bin"));
    r.part.OpenImage(cue);
    EXPECT_FALSE(r.part.cdMode());
    EXPECT_EQ(r.dialogs.messages, QStringList{"The disc image cannot be played:\r" + cue +
                                              "\rThe image file disc.bin was not found."});
    EXPECT_EQ(r.playlist.PlNames.size(), 2) << "the files stay";
}

TEST(CdPart, PlayingAnImageOrATrackGoesToCdModeAndEjectEndsIt)
{
    Rig r;
    const QString cue = r.image();
    r.part.PlayImage(cue);
    EXPECT_EQ(r.plays, 1);
    r.part.PlayTrack(3);
    r.part.PlayTrack(4);
    EXPECT_EQ(std::pair(r.plays, r.playlist.CurTrack), std::pair(2, 3)) << "no track 4";

    // Eject takes the image out and the drive is the source again.
    r.part.DoIt(13);
    EXPECT_EQ(r.stops, 1);
    EXPECT_EQ(r.part.source(), r.drivePath);
    EXPECT_TRUE(r.playlist.PlNames.isEmpty());
    EXPECT_TRUE(r.part.cdMode());
}

// Tray out, no disc, a disc spinning up, a disc: the words the status label shows.
TEST(CdPart, ADriveIsFollowedThroughItsStates)
{
    FakeCdDrive drive;
    Rig r(&drive);
    r.useCdp = 0;
    drive.image = r.image();
    r.part.DoIt(37);
    EXPECT_EQ(r.status(), QStringLiteral("No Disc"));
    EXPECT_TRUE(r.dialogs.messages.isEmpty()) << "a drive is there";

    drive.state = CdDrive::Status::TrayOpen;
    r.beat();
    EXPECT_EQ(r.status(), QStringLiteral("Ready"));
    drive.state = CdDrive::Status::NotReady;
    r.beat();
    EXPECT_EQ(r.status(), QStringLiteral("No Disc"));
    drive.state = CdDrive::Status::Disc;
    r.beat(4);
    EXPECT_EQ(r.status(), QStringLiteral("Stopped"));
    EXPECT_EQ(r.playlist.PlNames.size(), 3);

    r.part.DoIt(13);
    EXPECT_EQ(drive.ejects, 1);
    EXPECT_EQ(r.status(), QStringLiteral("Ready"));
    EXPECT_TRUE(r.playlist.PlNames.isEmpty());
}
