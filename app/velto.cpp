#include "velto.h"

#include "app/frmprefs.h"
#include "app/windowflags.h"
#include "core/commands.h"
#include "core/menumodel.h"
#include "core/settingkeys.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/readfile.h"
#include "platform/streamtext.h"
#include "platform/tuner.h"
#include "radio/fmpreset.h"
#include "radio/streamplaylist.h"
#include "skin/favouriteskins.h"
#include "skin/frmskinbrowse.h"
#include "skin/skinimport.h"
#include "skin/skinlistarea.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <utility>

namespace {

// The favourite skin slots of the popup menu that name each mode's skin.
constexpr int kPlayerFavourite = 1;
constexpr int kFmTunerFavourite = 5;
constexpr int kBrowserFavourite = 6;
constexpr int kWebRadioFavourite = 7;

} // namespace

Velto::Velto(Platform platform, ProgramFolder folder)
    : m_platform(platform), m_folder(std::move(folder)), m_config(platform.store),
      m_window(m_settings, platform.dialogs, platform.clock),
      m_player(m_playlist,
               {m_settings.MCIDevice, m_settings.PBOverlap, m_settings.UseTagCover,
                m_settings.FriendlyNames, m_settings.AutoCover, m_settings.AutoCloseQF,
                m_settings.ClearPLFirst, m_settings.AutoPlay, m_settings.ValidExt, m_settings.Path,
                m_settings.VisPLPath},
               {m_window.skin(), platform.dialogs, platform.random, platform.clock, m_window,
                m_folder.file(QStringLiteral("nocover.bmp")), m_mediaDevices}),
      m_fmTuner({m_settings.FMEnable, m_settings.FMDevice, m_settings.CardType, m_settings.CardPort,
                 m_settings.StartPreset, m_settings.StartFreq, m_settings.Freq,
                 m_settings.FMVolume},
                {m_window.skin(), platform.dialogs, openRadioDevice,
                 m_folder.file(QStringLiteral("stations.txt"))}),
      m_webRadio({m_settings.RadioURL},
                 {m_window.skin(), platform.dialogs, m_mediaDevices, m_player.wave(),
                  m_stationFetch, m_folder.file(QStringLiteral("webradio.txt"))}),
      m_stopwatches(m_window.skin()), m_mixer(platform.dialogs),
      m_cd(m_playlist, m_player.state(),
           {m_settings.UseCDP, m_settings.UseCDDB, m_settings.CDDBcmd, m_settings.EmailID,
            m_settings.CDDrive},
           {m_window.skin(), platform.dialogs, m_cdDrive, m_cddbFetch,
            m_folder.file(QStringLiteral("cdplayer.ini"))}),
      m_calculator({m_settings.CvtFile}, {m_window.skin(), platform.dialogs, m_folder.path()}),
      m_notepad({m_window.skin(), platform.dialogs, m_printer}),
      m_ledSign({m_settings.ExEnable, m_settings.ExPort, m_settings.ExParm}, m_serialPort),
      m_browser({m_settings.URL}, {m_window.skin(), m_folder.file(QStringLiteral("url-list.txt")),
                                   [this](QWidget *parent) { return m_webViews.create(parent); },
                                   [](const QUrl &url) { QDesktopServices::openUrl(url); },
                                   QStringLiteral("https://duckduckgo.com/?q=%1")}),
      m_clockTick(platform.clock, m_settings, m_window.skin(),
                  m_folder.file(QStringLiteral("autolist.txt"))),
      m_lights(m_window.skin(), {m_settings, m_player, m_stopwatches, m_fmTuner}),
      m_lifecycle(
          {m_config, platform.dialogs, platform.random, platform.clock, platform.screens, m_folder},
          m_settings, m_playlist, *this, *this, m_parts),
      m_popup({[this](qint16 cmd) { DoIt(cmd); }, [this](int slot) { SelFSkin(slot); },
               [this] { SetOnTop(m_window, isOnTop(m_settings.WinOnTop)); }},
              m_settings.WinOnTop),
      m_tray(m_window, m_popup)
{
    // The command table: which part owns which numbers. A clock skin gives
    // command 4 to the stopwatches (the split) rather than to the player.
    add(m_windowCommands, {{1, 3}, {5, 7}, {38, 39}, {151, 152}, {1001, 1021}});
    add(m_player, {{3, 5}, {7, 13}, {14, 29}, {30, 37}, {39, 40}, {150, 151}});
    add(m_stopwatches, {{4, 5}, {70, 76}});
    add(m_mixer, {{29, 30}});
    add(m_cd, {{13, 14}, {37, 38}});
    add(m_fmTuner, {{80, 101}});
    add(m_webRadio, {{130, 149}});
    add(m_calculator, {{40, 70}});
    add(m_notepad, {{76, 80}});
    add(m_ledSign, {});
    add(m_browser, {{101, 107}, {110, 120}});
    add(m_clockTick, {});
    connectParts();
    m_window.installEventFilter(this);
}

Velto::~Velto() = default;

void Velto::add(SkinPart &part, std::initializer_list<std::pair<int, int>> commands)
{
    m_parts.push_back(&part);
    for (const auto &[low, high] : commands)
        m_dispatcher.route(low, high, part);
}

void Velto::connectParts()
{
    frmNeOrb &w = m_window;
    connect(&w, &frmNeOrb::command, this, &Velto::DoIt);
    connect(&w, &frmNeOrb::menuRequested, this, [this] { m_popup.popup(QCursor::pos()); });
    connect(&w, &frmNeOrb::wheelTurned, &m_player, &PlayerPart::wheel);
    connect(&w, &frmNeOrb::filesDropped, &m_player, &PlayerPart::addPaths);
    connect(&w, &frmNeOrb::escapePressed, this, [this] { m_player.playlist().cancelScan(); });
    w.keys().setModeKeys([this](char32_t typed) -> std::optional<qint16> {
        for (const SkinPart *part : m_parts)
            if (m_dispatcher.inMode(*part))
                if (const auto cmd = part->keyCommand(typed))
                    return cmd;
        return std::nullopt;
    });
    // The media engine (~100 ms, some 35 MiB) loads when something is first
    // about to play, never for a player that only sits there. A pointer
    // coming onto the window starts it, so the click that follows finds it
    // loaded or nearly so.
    connect(&w, &frmNeOrb::firstFramePainted, this, [this] {
        m_player.windowShown();
        if (!m_radioStart.streams.isEmpty())
            playRadio(std::exchange(m_radioStart, {}));
    });
    connect(&w, &frmNeOrb::pointerEntered, this, [this] { m_mediaDevices.preload(); });
    connect(&w.skin(), &SkinLoader::sliderChanged, this, [this](int number, double value) {
        if (number == VolumeControl::kVolumeSlider) {
            m_player.fade().cancel();
            m_player.volume().setVolumeLevel(float(value));
        } else if (number == VolumeControl::kBalanceSlider) {
            m_player.volume().SetBalance(float(value));
        }
    });
    connect(&w.skin(), &SkinLoader::sliderReleased, this, [this](int number, double value) {
        if (number == PlaybackEngine::kPositionSlider)
            m_player.engine().PlayFrom(qint32(value * m_player.state().TrackLength));
    });

    connect(&m_player, &PlayerPart::titlesChanged, this,
            [this](const QString &title, const QString &tip) {
                m_window.setWindowTitle(title);
                if (!tip.isEmpty())
                    m_tray.setToolTip(tip);
            });
    connect(&m_player, &PlayerPart::stateChanged, this, [this] {
        // One player at a time: the playlist starting ends the radio.
        if (m_player.state().playing && m_webRadio.active())
            m_webRadio.WRStop();
        m_lights.refresh();
    });
    connect(&m_webRadio, &WebRadio::playingStarted, this, [this] {
        if (m_player.state().playing)
            m_player.DoIt(Command::Stop);
    });
    connect(&m_webRadio, &WebRadio::titlesChanged, this,
            [this](const QString &title, const QString &tip) {
                m_window.setWindowTitle(title);
                m_tray.setToolTip(tip);
            });
    connect(&m_fmTuner, &FmTuner::stateChanged, this, [this] { m_lights.refresh(); });
    connect(&m_player, &PlayerPart::ExDevOut, this,
            [this](const QString &text) { m_ledSign.ExDevOut(text); });
    connect(&m_player, &PlayerPart::pathChosen, this, [this](const QString &path) {
        m_config.SaveStr(settingKey(&Settings::Path), path);
        m_config.flush();
    });

    // CD mode: the engine plays the disc's tracks, and the CD part gets the
    // images and track files the player meets.
    PlaybackEngine &engine = m_player.engine();
    connect(&m_cd, &CdPart::cdModeChanged, &engine, &PlaybackEngine::setCDMode);
    // A disc is about to play: the media engine loads meanwhile, off this thread.
    connect(&m_cd, &CdPart::cdModeChanged, this, [this](bool on) {
        if (on)
            m_mediaDevices.preload();
    });
    connect(&m_cd, &CdPart::playRequested, this,
            [this] { m_mediaDevices.whenLoaded([this] { m_player.engine().PlayIt(); }); });
    connect(&m_cd, &CdPart::stopRequested, &engine, &PlaybackEngine::StopIt);
    connect(&m_cd, &CdPart::playlistChanged, this, [this] {
        m_player.showPlaylist();
        // The title of a track playing follows when its name arrives.
        if (m_player.state().CDMode && m_player.state().playing)
            m_player.engine().ShowTitles();
        m_lights.refresh();
    });
    connect(&m_player.playlist(), &PlaylistControl::discImageOpened, &m_cd, &CdPart::OpenImage);
    connect(&m_player.playlist(), &PlaylistControl::mediaFilesWanted, &m_cd, &CdPart::leaveCdMode);
    // Queued: these come from inside PlayIt, which must end first.
    connect(&engine, &PlaybackEngine::discImageWanted, &m_cd, &CdPart::PlayImage,
            Qt::QueuedConnection);
    connect(&engine, &PlaybackEngine::cdTrackWanted, &m_cd, &CdPart::PlayTrack,
            Qt::QueuedConnection);
    // Home, Search and the other browser commands from the menu of another
    // mode switch to the browser first.
    connect(&m_browser, &WebBrowser::modeWanted, this, [this] { SelFSkin(kBrowserFavourite); });

    connect(&m_clockTick, &ClockTick::beat, this, [this](const QDateTime &now) {
        for (SkinPart *part : m_parts)
            part->clockTick(now);
        // Whatever changed a switch without a command (the preferences, a
        // device), the lights follow within a beat.
        m_lights.refresh();
    });
    connect(&m_clockTick, &ClockTick::switchOn, this, &Velto::switchOn);
    connect(&m_clockTick, &ClockTick::switchOff, this, &Velto::switchOff);
    connect(&m_clockTick, &ClockTick::snoozeEnded, this, &Velto::switchOff);
}

void Velto::Load(const QStringList &names, const QString &workingFolder, bool playNow)
{
    m_lifecycle.Load(names, workingFolder, playNow);
    m_player.showPlaylist();
    m_window.skin().setScrollName(m_settings.ScrollName == 1);
    m_window.skin().setTimeFmt(m_settings.TimeFmt != 0);
    m_clockTick.ShowTime();
    // Devices open asynchronously, so even an automatic start is silent.
    if (m_settings.StartMute != 0)
        m_player.setMuted(true);
    m_lights.refresh();
}

// The media files' playlist is the one saved, even when a disc is playing.
void Velto::Unload(bool interactive)
{
    if (!m_lifecycle.unloaded())
        m_cd.leaveCdMode();
    m_lifecycle.Unload(interactive);
}

void Velto::DoIt(qint16 cmd)
{
    m_dispatcher.DoIt(cmd);
    // Every switch a command flips shows at once.
    m_lights.refresh();
}

void Velto::windowCommand(qint16 cmd)
{
    switch (cmd) {
    case Command::ShutDown:
        // Closing a window hidden in the tray runs the shut-down but would not end the program.
        if (m_window.close())
            QCoreApplication::quit();
        return;
    case 2:
        return m_window.showMinimized();
    case 5:
        return ShowPrefs();
    case 6:
        return SelectSkin();
    case 38:
        return m_popup.popup(QCursor::pos());
    case 151:
        return LoadSkin(m_window.skin().file());
    default:
        break;
    }
    const QStringList &links = m_window.skin().skin().keyTable;
    if (cmd >= 1001 && cmd < 1011)
        return LoadSkin(Dispatcher::linkEntry(links, cmd - 1000));
    // The 210 offset lands on 801..810, past the end of the key table, so these
    // never open a link. Skins rely on these numbers being inert: keep it.
    if (cmd >= 1011 && cmd <= 1020)
        QDesktopServices::openUrl(QUrl::fromUserInput(Dispatcher::linkEntry(links, cmd - 210)));
}

void Velto::minimiseWindow()
{
    m_window.setWindowState(m_window.windowState() | Qt::WindowMinimized);
}

void Velto::LoadSkin(const QString &file)
{
    loadSkin(file);
}

QString Velto::loadSkin(const QString &file)
{
    SkinLoader &loader = m_window.skin();
    // Key tables name other skins by bare file names, beside the current skin.
    QString path = file;
    if (QFileInfo(file).isRelative() && !loader.file().isEmpty())
        path = QFileInfo(loader.file()).dir().filePath(file);
    QList<SkinPart *> wasIn;
    for (SkinPart *part : m_parts)
        if (m_dispatcher.inMode(*part))
            wasIn << part;
    if (!loader.LoadSkin(path))
        return {};
    const QFileInfo loaded(loader.file());
    m_settings.Skin = loaded.fileName();
    m_settings.SkinPath = loaded.absolutePath();
    QStringList modes;
    for (const QString &type : loader.skin().types)
        modes << type.toUpper();
    m_dispatcher.setSkinModes(modes);
    for (SkinPart *part : m_parts) {
        part->skinLoaded();
        const bool in = m_dispatcher.inMode(*part);
        if (in && !wasIn.contains(part))
            part->entered();
        else if (!in && wasIn.contains(part))
            part->left();
    }
    m_lights.refresh();
    return loader.file();
}

QString Velto::userSkin(const QString &file)
{
    QString path = file;
    if (m_settings.SkinImport.trimmed() != QLatin1String("0") && SkinImport::isOlderFormat(path) &&
        m_platform.dialogs.question(
            QStringLiteral("Import Skin"),
            QStringLiteral("This skin is in the older skin format.\rImport it as a Velto skin? "
                           "A converted copy is saved beside it; the original stays as it is."))) {
        const SkinImport::Result imported = SkinImport::importSkin(path);
        if (!imported.message.isEmpty())
            m_platform.dialogs.message(imported.message);
        if (!imported.file.isEmpty())
            path = imported.file;
    }
    return loadSkin(path);
}

QString Velto::skinFolder() const
{
    return m_settings.SkinPath.isEmpty() ? m_folder.file(QStringLiteral("skins"))
                                         : m_settings.SkinPath;
}

QString Velto::favouriteSkin(int slot) const
{
    return FavouriteSkins::skinFile(slot, m_settings.FavSkin, skinFolder(),
                                    m_folder.file(QStringLiteral("skins")));
}

// A slot with no skin and no mode of its own opens the browser, where the
// user can give it one.
void Velto::SelFSkin(int slot)
{
    const QString file = favouriteSkin(slot);
    if (file.isEmpty())
        ShowSkinBrowser(QStringLiteral("Favorite"));
    else
        userSkin(file);
}

void Velto::SelectSkin()
{
    if (m_settings.UseSkinBrowser == 1)
        return ShowSkinBrowser();
    const QStringList chosen = m_platform.dialogs.openFiles(
        QStringLiteral("Select Skin"), skinFolder(), QStringLiteral("Skins (*.skin)|*.skin"));
    if (!chosen.isEmpty())
        userSkin(chosen.first());
}

void Velto::ShowSkinBrowser(const QString &typeFilter)
{
    if (!m_skinBrowser) {
        m_skinBrowser = std::make_unique<frmSkinBrowse>(
            frmSkinBrowse::Options{m_settings.SkinPath, m_settings.FavSkin,
                                   m_folder.file(QStringLiteral("skins"))},
            m_window.skin(), m_platform.dialogs,
            [this](const QString &file) { return userSkin(file); }, &m_window);
    }
    frmSkinBrowse &browser = *m_skinBrowser;
    browser.setCurrentSkin(m_window.skin().file());
    if (!typeFilter.isEmpty())
        browser.setTypeFilter(typeFilter);
    browser.ReadSkinDir();
    browser.show();
    browser.raise();
    browser.activateWindow();
}

// Not modal: the player goes on while the dialog is open, and OK takes over
// only what the user changed in it.
void Velto::ShowPrefs()
{
    if (!m_prefs) {
        auto *dialog =
            new frmPrefs(m_settings, m_clockTick.autoList(), m_platform.dialogs, &m_window);
        connect(dialog, &QDialog::finished, this, [this, dialog](int result) {
            if (result == QDialog::Accepted)
                applyPrefs(*dialog);
            dialog->deleteLater();
            m_prefs.clear();
        });
        m_prefs = dialog;
    }
    m_prefs->show();
    m_prefs->raise();
    m_prefs->activateWindow();
}

void Velto::applyPrefs(const frmPrefs &prefs)
{
    const bool wasOnTop = isOnTop(m_settings.WinOnTop);
    prefs.applyTo(m_settings);
    if (prefs.autoListChanged() && !m_clockTick.setAutoList(prefs.autoList()))
        m_platform.dialogs.message(
            QStringLiteral("Unable to write the schedule list! Is the file read-only?"));
    if (isOnTop(m_settings.WinOnTop) != wasOnTop)
        SetOnTop(m_window, isOnTop(m_settings.WinOnTop));
    if (const QString skin = prefs.chosenSkin(); !skin.isEmpty())
        userSkin(skin);
    m_window.skin().setTimeFmt(m_settings.TimeFmt != 0);
    m_window.skin().setScrollName(m_settings.ScrollName == 1);
    for (SkinPart *part : m_parts)
        part->settingsChanged();
    m_lights.refresh();
}

void Velto::switchOn(int preset)
{
    bringForward(m_window);
    // Preset n: the FM preset numbered n when the tuner is in use and has
    // one, else the n-th web radio station; 0, or a preset nobody has, plays
    // the playlist, which is better than a silent alarm.
    const QStringList &fm = m_fmTuner.presets();
    if (preset >= 1 && m_fmTuner.enabled() && preset < fm.size() &&
        FmPreset::frequency(fm[preset]) > 0) {
        enterMode(m_fmTuner, kFmTunerFavourite);
        m_fmTuner.FMJumpPreset(preset);
        return;
    }
    if (preset >= 1 && preset <= m_webRadio.stations().size()) {
        enterMode(m_webRadio, kWebRadioFavourite);
        m_player.fade().fadeIn(); // the radio follows the program's output level
        m_webRadio.WRDoPreset(preset - 1);
        return;
    }
    m_player.switchOn();
}

void Velto::switchOff()
{
    m_player.switchOff();
    if (m_webRadio.active())
        m_webRadio.WRStop();
    if (m_fmTuner.enabled() && !m_fmTuner.muted())
        m_fmTuner.FMToggleMute();
    if (m_settings.SnoozeHide == 1)
        m_window.showMinimized();
}

void Velto::enterMode(const SkinPart &part, int favouriteSlot)
{
    if (m_dispatcher.inMode(part))
        return;
    if (const QString file = favouriteSkin(favouriteSlot); !file.isEmpty())
        loadSkin(file);
}

Velto::Stations Velto::radioStreams(const QString &path)
{
    if (isNetworkAddress(path))
        return {{path}, false};
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix != QLatin1String("pls") && suffix != QLatin1String("m3u"))
        return {};
    const FileBytes bytes = readRegularFile(path, 64 * 1024);
    if (bytes.fault != FileFault::None)
        return {};
    const QStringList streams = stationPlaylist(bytes.bytes, QUrl::fromLocalFile(path));
    return {streams, !streams.isEmpty()};
}

void Velto::addOpened(const QString &path)
{
    Stations stations = radioStreams(path);
    if (stations.streams.isEmpty()) {
        m_player.addOpened(path);
        // What the user opened is shown, unless a station came first.
        if (m_radioStart.streams.isEmpty())
            enterMode(m_player, kPlayerFavourite);
        return;
    }
    // The first station named wins; it plays once the window is up.
    if (m_radioStart.streams.isEmpty()) {
        m_radioStart = std::move(stations);
        enterMode(m_webRadio, kWebRadioFavourite);
    }
}

bool Velto::openRadio(const QString &path)
{
    const Stations stations = radioStreams(path);
    if (stations.streams.isEmpty())
        return false;
    enterMode(m_webRadio, kWebRadioFavourite);
    playRadio(stations);
    return true;
}

void Velto::openFiles(const QStringList &paths, bool play)
{
    enterMode(m_player, kPlayerFavourite);
    m_player.openHanded(paths, play);
}

void Velto::playRadio(const Stations &stations)
{
    if (stations.playlist)
        m_webRadio.playStreams(stations.streams, QString());
    else
        m_webRadio.playAddress(stations.streams.first());
}

void Velto::playWhenScanned()
{
    // What the command line gave the radio plays; the playlist waits.
    if (m_radioStart.streams.isEmpty())
        m_player.playWhenScanned();
}

bool Velto::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != &m_window || event->type() != QEvent::Close)
        return false;
    // The desktop's close may only hide Velto in the tray; Quit and Ctrl+Q always end it.
    if (event->spontaneous() && m_tray.hidesOnClose(m_settings.ExitMode)) {
        m_window.hide();
        event->ignore();
        return true;
    }
    Unload(true);
    event->accept();
    return false;
}
