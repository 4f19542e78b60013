#include "playerpart.h"

#include "frmqfind.h"
#include "frmvisloader.h"

#include "core/commands.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "skin/skinlistarea.h"
#include "skin/skinsurface.h"

#include <QFileInfo>
#include <QPointer>

#include <cmath>

PlayerPart::PlayerPart(PlaylistState &playlist, Options options, Services services)
    : m_playlistState(playlist), m_options(options), m_svc(std::move(services)),
      m_engine(playlist, m_flags,
               {options.MCIDevice, options.PBOverlap, options.UseTagCover, options.FriendlyNames},
               m_svc.skin, m_svc.dialogs, m_svc.random, [this] { return m_svc.devices.create(); }),
      m_volume(m_wave, m_svc.skin), m_fade(m_svc.clock),
      m_playlistControl(playlist,
                        {options.Path, options.ClearPLFirst, options.AutoPlay,
                         options.FriendlyNames, options.ValidExt, m_engine.state().CDMode},
                        m_svc.skin, m_svc.dialogs),
      m_trackInfo({m_svc.skin,
                   m_svc.dialogs,
                   {options.UseTagCover, options.AutoCover, options.FriendlyNames, options.Path},
                   playlist,
                   m_svc.noCoverFile,
                   &m_svc.window}),
      m_video(m_svc.window), m_scanBanner(m_svc.skin)
{
    PlaybackEngine &e = m_engine;
    connect(&e, &PlaybackEngine::stateChanged, this, &PlayerPart::stateChanged);
    connect(&e, &PlaybackEngine::ExDevOut, this, &PlayerPart::ExDevOut);
    connect(&e, &PlaybackEngine::titlesChanged, this,
            [this](const QString &title, const QString &tip) {
                m_title = title;
                m_scanBanner.setTitle(title);
                m_video.setTitle(title);
                emit titlesChanged(title, tip);
            });
    connect(&e, &PlaybackEngine::playlistChanged, this, &PlayerPart::showPlaylist);
    connect(&e, &PlaybackEngine::entryPlaying, &m_playlistControl, &PlaylistControl::markPlaying);
    connect(&e, &PlaybackEngine::entryShown, this, [this](int row) {
        if (SkinListArea *list = m_svc.skin.list(1); list && row < list->count())
            list->setCurrentRow(row);
    });
    connect(&e, &PlaybackEngine::deviceCreated, this, [this](MediaDevice *device) {
        m_wave.addDevice(device);
        m_video.addDevice(*device);
    });

    // Frame information, cover and lyrics follow the item the engine plays.
    connect(&e, &PlaybackEngine::mp3Info, &m_trackInfo, &TrackInfo::ShowMp3Info);
    connect(&e, &PlaybackEngine::tagCoverWanted, this,
            [this](const QString &album, const QString &artist) {
                m_trackInfo.LoadTagCover(m_engine.state().CurFile, album, artist);
            });
    connect(&e, &PlaybackEngine::coverWanted, &m_trackInfo, &TrackInfo::LoadCover);
    connect(&e, &PlaybackEngine::trackStarted, this, [this](const QString &file) {
        m_trackInfo.setCurrentFile(file);
        m_trackInfo.TrackStarted(file);
    });
    connect(&e, &PlaybackEngine::ticked, &m_trackInfo, &TrackInfo::Tick);
    connect(&m_trackInfo, &TrackInfo::seekWanted, this,
            [this](qint64 pos) { m_engine.PlayFrom(qint32(pos)); });
    connect(&m_trackInfo, &TrackInfo::lyricsChanged, this, &PlayerPart::stateChanged);
    connect(&m_trackInfo, &TrackInfo::tagSaved, &e, &PlaybackEngine::TagSaved);

    connect(&m_playlistControl, &PlaylistControl::playRequested, this, &PlayerPart::playWhenLoaded);
    connect(&m_playlistControl, &PlaylistControl::pathChosen, this, &PlayerPart::pathChosen);
    connect(&m_playlistControl, &PlaylistControl::listFileShown, this,
            [this](const QString &file) { m_trackInfo.cover().PlaylistLoaded(file); });
    connect(&m_playlistControl, &PlaylistControl::cleared, this, [this] {
        m_startCover.clear();
        m_trackInfo.cover().PlaylistCleared();
    });
    connect(&m_playlistControl, &PlaylistControl::scanProgress, &m_scanBanner, &ScanBanner::show);
    connect(&m_scanBanner, &ScanBanner::titleChanged, this,
            [this](const QString &title) { emit titlesChanged(title, QString()); });

    // The fade counts in steps of the word's channels.
    m_fade.readLevel = [this] { return int(std::lround(m_volume.volumeLevel() * 65535.0)); };
    m_fade.setLevel = [this](int level) { m_volume.setVolumeLevel(float(level / 65535.0)); };
}

PlayerPart::~PlayerPart() = default;

QStringList PlayerPart::modes() const
{
    return {QStringLiteral("PLAYER"), QStringLiteral("KARAOKE")};
}

void PlayerPart::startWhenLoaded(std::function<void()> start)
{
    m_waitingStart = std::move(start);
    m_svc.devices.whenLoaded([this] {
        if (const std::function<void()> start = std::exchange(m_waitingStart, {}))
            start();
    });
}

void PlayerPart::playWhenLoaded()
{
    startWhenLoaded([this] { m_engine.PlayIt(); });
}

void PlayerPart::toggle(bool PlayerFlags::*flag)
{
    m_flags.*flag = !(m_flags.*flag);
    m_engine.ShowLights();
}

void PlayerPart::DoIt(qint16 cmd)
{
    PlaybackEngine &e = m_engine;
    PlaylistControl &pl = m_playlistControl;
    switch (cmd) {
    case 3:
        return m_trackInfo.ShowTrackInfo();
    case 4:
        return e.ToggleRemaining();
    case 7:
    case 8:
        m_fade.cancel(); // the user took over
        return m_volume.VolumeStep(cmd == 7 ? +1 : -1);
    case 9:
        m_volume.ToggleMute();
        emit stateChanged();
        return;
    case Command::Stop:
        pl.cancelScan(); // Stop also ends a folder scan
        m_waitingStart = {};
        return e.StopIt();
    case Command::Pause:
        return e.PauseIt();
    case Command::Play:
        return playWhenLoaded();
    case Command::Previous:
        return startWhenLoaded([&e] { e.PrevTrack(); });
    case Command::Next:
        return startWhenLoaded([&e] { e.NextTrack(); });
    case 16:
        return m_trackInfo.ShowAux16();
    case 17:
        return startWhenLoaded([&e, row = pl.selectedIndex()] { e.PlSelAct(row); });
    case 18:
        return pl.PlMoveEntry(+1);
    case 19:
        return pl.PlMoveEntry(-1);
    case 20:
        return pl.PlClear();
    // What is opened is about to play: the engine starts loading meanwhile.
    case 21:
        m_svc.devices.preload();
        return pl.PlLoad();
    case 22:
        return pl.PlSaveAs();
    case 23:
        m_svc.devices.preload();
        return pl.OpenMedia();
    case 24:
        m_svc.devices.preload();
        return pl.AddFromDir();
    case 25:
        return toggle(&PlayerFlags::IntroScan);
    case 26:
        return toggle(&PlayerFlags::StopAfterItem);
    case Command::RepeatItem:
        return toggle(&PlayerFlags::RepeatItem);
    case Command::Shuffle:
        return toggle(&PlayerFlags::Shuffle);
    case 30:
        return e.LoopPoint();
    // Whatever the position is, playing or not.
    case 31:
        m_markPos = e.currentPosition();
        return;
    case 32:
        return e.Reverse();
    case 33:
        return e.Forward();
    case 34:
        return ToggleAux();
    case 35:
        return ShowVisSelect();
    case Command::PlayPause:
        if (e.state().playing)
            return e.PauseIt();
        return playWhenLoaded();
    case 39:
        return startWhenLoaded([this] { m_engine.JumpTo(m_markPos); });
    case 150:
        return ShowQuickFind();
    default:
        return;
    }
}

void PlayerPart::ending(bool)
{
    m_engine.CloseDevices();
}

void PlayerPart::skinLoaded()
{
    showPlaylist();
    m_engine.skinLoaded();
    m_volume.showAll();
    const auto &areas = m_svc.skin.skin().areas;
    const bool videoBox = std::any_of(areas.begin(), areas.end(),
                                      [](const SkinArea &area) { return area.number == 2; });
    m_video.setVideoBox(videoBox ? m_svc.skin.area(2) : nullptr);
}

void PlayerPart::clockTick(const QDateTime &)
{
    m_fade.tick();
}

void PlayerPart::showPlaylist()
{
    m_playlistControl.setList(m_svc.skin.list(1));
    m_playlistControl.ShowPlaylist();
}

void PlayerPart::addOpened(const QString &path)
{
    m_svc.devices.preload();
    m_playlistControl.addOpened(path);
}

void PlayerPart::playWhenScanned()
{
    m_playlistControl.afterScans([this] { playWhenLoaded(); });
}

void PlayerPart::addPaths(const QStringList &paths)
{
    m_svc.devices.preload();
    m_playlistControl.addPaths(paths);
}

void PlayerPart::openHanded(const QStringList &paths, bool play)
{
    m_playlistControl.addThen(paths, [this, play](int first) {
        if (first == 0)
            return;
        if (play)
            return startWhenLoaded([this, first] { m_engine.PlSelAct(first - 1); });
        if (m_playlistState.CurTrack == 0)
            m_playlistState.CurTrack = first;
    });
}

// A big picture would hold up the first frame; it is decoded after it.
void PlayerPart::setStartCover(const QString &file)
{
    if (m_shown)
        m_trackInfo.LoadCover(file);
    else
        m_startCover = file;
}

QString PlayerPart::currentCover() const
{
    const QString shown = m_trackInfo.cover().CoverFile;
    return shown.isEmpty() ? m_startCover : shown;
}

void PlayerPart::windowShown()
{
    m_shown = true;
    // Unless playing brought a cover of its own meanwhile.
    if (!m_startCover.isEmpty() && m_trackInfo.cover().CoverFile.isEmpty())
        m_trackInfo.LoadCover(m_startCover);
    m_startCover.clear();
}

void PlayerPart::wheel(int angleDelta)
{
    m_fade.cancel();
    m_volume.wheel(angleDelta);
}

void PlayerPart::switchOn()
{
    m_fade.fadeIn(); // silent first, so the first note is not at full volume
    playWhenLoaded();
}

void PlayerPart::switchOff()
{
    m_fade.finish(); // the next play must not start at a fraction of the volume
    DoIt(10);
}

void PlayerPart::ShowQuickFind()
{
    if (!m_qfind) {
        m_qfind = std::make_unique<frmQFind>(m_playlistState, m_options.AutoCloseQF, &m_svc.window);
        connect(m_qfind.get(), &frmQFind::playRequested, this, &PlayerPart::playWhenLoaded);
    }
    m_qfind->Form_Load();
    m_qfind->show();
    m_qfind->raise();
    m_qfind->activateWindow();
}

void PlayerPart::ToggleAux()
{
    if (m_qfind && m_qfind->isVisible())
        m_qfind->hide();
    else
        ShowQuickFind();
}

void PlayerPart::ShowVisSelect()
{
    if (!m_visLoader) {
        m_visLoader =
            std::make_unique<frmVisLoader>(frmVisLoader::Options{m_options.VisPLPath},
                                           m_svc.noCoverFile, m_svc.dialogs, &m_svc.window);
        frmVisLoader *selector = m_visLoader.get();
        connect(
            selector, &frmVisLoader::loadRequested, this, [this, selector](const QString &file) {
                m_playlistControl.loadList(
                    file, [this, shown = QPointer<frmVisLoader>(selector)](int first, int count) {
                        if (shown)
                            shown->showEntries(m_playlistState.PlNames.mid(first, count), first);
                    });
            });
        connect(selector, &frmVisLoader::playRequested, this, [this](int index) {
            if (index < 0 || index >= m_playlistState.PlPath.size())
                return;
            m_playlistState.CurTrack = index + 1;
            playWhenLoaded();
        });
        m_visLoader->show();
        m_visLoader->Form_Load();
    }
    m_visLoader->show();
    m_visLoader->raise();
    m_visLoader->activateWindow();
}
