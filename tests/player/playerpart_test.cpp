#include "player/frminfo.h"
#include "player/frmqfind.h"
#include "player/frmvisloader.h"
#include "player/playerpart.h"

#include "support/fakes.h"
#include "support/recordingsurface.h"
#include "support/temphome.h"

#include <QTest>
#include <gtest/gtest.h>

#include <functional>

namespace {

// The player part on a recording surface, with scripted dialogs and no
// media engine: what each of its command numbers does.
struct PlayerRig
{
    PlayerRig() = default;
    // An engine module to load: a missing one loads (and fails) off the window's thread.
    explicit PlayerRig(const QString &module) : devices(QStringList{module}) {}

    TempHome home;
    FakeDialogs dialogs;
    FakeRandom random;
    FakeClock clock;
    QWidget window;
    RecordingSurface skin;
    MediaDeviceFactory devices{QStringList()}; // no engine: devices play silence
    PlaylistState playlist;
    QString mciDevice = QStringLiteral("0"), validExt = QStringLiteral("mp3"), path, visPLPath;
    qint16 pbOverlap = 0, useTagCover = 0, friendlyNames = 1, autoCover = 0, autoCloseQF = 0,
           clearFirst = 0, autoPlay = 0;
    PlayerPart player{playlist,
                      {mciDevice, pbOverlap, useTagCover, friendlyNames, autoCover, autoCloseQF,
                       clearFirst, autoPlay, validExt, path, visPLPath},
                      {skin, dialogs, random, clock, window, home.file("nocover.bmp"), devices}};
};

} // namespace

// The toggles, the album window (16) and the visual selector (35) are driven
// through the main window.
TEST(PlayerPart, EachCommandReachesItsProcedure)
{
    const struct
    {
        qint16 cmd;
        std::function<bool(PlayerRig &)> done;
    } cases[] = {
        {3, [](PlayerRig &r) { return r.player.trackInfo().infoWindow()->isVisible(); }},
        {4, [](PlayerRig &r) { return r.player.state().ShowRemaining; }},
        {21, [](PlayerRig &r) { return r.dialogs.calls.last().title == "Load Playlist"; }},
        {22, [](PlayerRig &r) { return r.dialogs.calls.last().title == "Save Playlist"; }},
        {34, [](PlayerRig &r) { return r.player.quickFind()->isVisible(); }},
        {39, [](PlayerRig &r) { return r.dialogs.prompts.last().startsWith("Jump to entry"); }},
    };
    for (const auto &c : cases) {
        PlayerRig rig;
        rig.playlist.PlNames = {"a"};
        rig.playlist.PlPath = {"/m/a.mp3"};
        rig.player.DoIt(c.cmd);
        EXPECT_TRUE(c.done(rig)) << "command " << c.cmd;
    }
}

// However a play starts, the window goes on while the media engine loads, and
// the play follows once it has; Play itself is the main window's test.
TEST(PlayerPart, EveryWayToPlayWaitsForTheEngineWithoutHoldingTheWindow)
{
    const struct
    {
        const char *what;
        std::function<void(PlayerRig &)> start;
    } cases[] = {
        {"a file handed over",
         [](PlayerRig &r) { r.player.openHanded({r.home.file("a.mp3")}, true); }},
        {"an entry of the visual selector",
         [](PlayerRig &r) {
             r.player.DoIt(35);
             r.player.visSelector()->showEntries(r.playlist.PlNames, 0);
             r.player.visSelector()->PlayList_DblClick(0);
         }},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        PlayerRig rig(QStringLiteral("/nonexistent/libvelto_mpv.so"));
        rig.playlist.PlNames = {"a"};
        rig.playlist.PlPath = {rig.home.write("a.mp3", "not really sound")};
        c.start(rig);
        EXPECT_FALSE(rig.devices.isLoaded()) << "the window waited for the engine";
        // Without the module every device refuses, with a box.
        EXPECT_TRUE(QTest::qWaitFor([&] { return !rig.dialogs.messages.isEmpty(); }))
            << "the play did not follow";
    }
}
