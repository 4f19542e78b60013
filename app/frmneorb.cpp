#include "frmneorb.h"

#include "app/frmprefs.h"
#include "app/frmqfind.h"
#include "core/snap.h"
#include "platform/dialogs.h"
#include "player/autolist.h"
#include "skin/lights.h"
#include "skin/skinlistarea.h"
#include "skin/skinsliderwidget.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QInputDialog>
#include <QLineEdit>
#include <QLinearGradient>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <vector>

frmNeOrb::frmNeOrb(Platform platform, ProgramFolder folder, QWidget *parent)
    : QWidget(parent, Qt::FramelessWindowHint | Qt::Window), m_platform(platform),
      m_folder(std::move(folder)), m_config(platform.store),
      m_lifecycle(
          {m_config, platform.dialogs, platform.random, platform.clock, platform.screens, m_folder},
          m_settings, m_playlist, *this),
      m_skin(*this, platform.dialogs, platform.clock),
      m_engine(m_playlist, m_flags, platform.dialogs, platform.random,
               [this] { return m_mediaDevices.create(); }),
      m_playlistControl(m_playlist,
                        {m_settings.Path, m_settings.ClearPLFirst, m_settings.AutoPlay,
                         m_settings.FriendlyNames, m_settings.ValidExt},
                        platform.dialogs, m_engine),
      m_dispatcher({*this, m_engine, m_playlistControl, m_calculator, m_stopwatches, m_notepad,
                    m_fm, m_web, m_webRadio, m_mixer, m_flags, m_markPos, m_wrPresetIdx,
                    m_linkList}),
      m_clockTick(platform.clock, m_settings, m_autoList, clockActions()), m_fade(platform.clock)
{
    setWindowTitle(QStringLiteral("Velto"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::StrongFocus);
    resize(400, 160);
    connect(&m_skin, &SkinLoader::command, this, &frmNeOrb::DoIt);
    connect(&m_keys, &KeyboardInput::command, this, &frmNeOrb::DoIt);
    connect(&m_keys, &KeyboardInput::quitRequested, this, &QWidget::close);
    connect(&m_keys, &KeyboardInput::outlineStyle, this, [this](int style) {
        m_skin.setOutlineStyle(style);
        if (style == 0)
            m_playlistControl.cancelScan();
    });
    setAcceptDrops(true);
    connectPlaylist();
    wireEngine();
    wireTrackInfo();
    wireVolume();
    m_stopwatches.setLabelFn([this](int n, const QString &text) { m_skin.setLabel(n, text); });
    m_stopwatches.setDisplayFn([this](const QString &text) { showStopwatch(text); });
    m_timer2.setInterval(250);
    connect(&m_timer2, &QTimer::timeout, this, [this] { m_clockTick.Timer2_Timer(); });
}

ClockTick::Actions frmNeOrb::clockActions()
{
    ClockTick::Actions a;
    a.setLabel = [this](int n, const QString &text) { m_skin.setLabel(n, text); };
    a.setDD = [this](int group, const QVariant &value) { m_skin.SetDD(group, value); };
    // The shipped skins show the day on label 14 and the date on label 21.
    a.makeDayStr = [this](const DayText &texts) {
        m_skin.setLabel(14, texts.day);
        m_skin.setLabel(21, texts.date);
    };
    a.switchOn = [this](int preset) { switchOn(preset); };
    a.switchOff = [this] { switchOff(); };
    a.snoozeAction = [this] { switchOff(); };
    a.endOfTick = [this](const QDateTime &now) {
        m_stopwatches.tick(now);
        m_fade.tick();
        // Whatever changed a switch without a command (the preferences, a
        // device), the lights follow within a tick.
        refreshLights();
    };
    return a;
}

// Group 6 in mode 5 counts whole seconds; any other mode takes the text with
// its tenths, "h:mm:ss.t".
void frmNeOrb::showStopwatch(const QString &text)
{
    const auto &groups = m_skin.skin().digitGroups;
    const bool seconds = std::any_of(groups.begin(), groups.end(), [](const SkinDigitGroup &g) {
        return g.number == 6 && g.mode == 5;
    });
    if (seconds)
        m_skin.SetDD(6, int(m_stopwatches.shownSeconds(m_stopwatches.current())));
    else
        m_skin.SetDD(6, text);
}

void frmNeOrb::switchOn(int preset)
{
    // Presets 1-9 pick a radio station once the radio modes exist; until then
    // every alarm plays the playlist, which is better than a silent one.
    Q_UNUSED(preset);
    showNormal();
    raise();
    activateWindow();
    m_fade.fadeIn(); // silent first, so the first note is not at full volume
    DoIt(12);
}

void frmNeOrb::switchOff()
{
    m_fade.finish(); // the next play must not start at a fraction of the volume
    DoIt(10);
    if (m_settings.SnoozeHide == 1)
        showMinimized();
}

void frmNeOrb::LoadAutoList(const QString &file)
{
    m_autoList = ::LoadAutoList(file);
}

void frmNeOrb::InitTimers()
{
    m_stopwatches.TimerFn(0);
    m_skin.setTimeFmt(m_settings.TimeFmt != 0);
    m_clockTick.ShowTime();
    m_timer2.start();
}

void frmNeOrb::wireEngine()
{
    PlaybackEngine &e = m_engine;
    e.options = [this] {
        return PlaybackEngine::Options{m_settings.MCIDevice, m_settings.PBOverlap,
                                       m_settings.UseTagCover, m_settings.FriendlyNames > 0};
    };
    e.showLights = [this] { refreshLights(); };
    e.setLabel = [this](int n, const QString &text) { m_skin.setLabel(n, text); };
    e.SetDD = [this](int group, const QVariant &value) {
        if (group == NameScroller::kGroup)
            m_scroller.setText(value.toString());
        else
            m_skin.SetDD(group, value);
    };
    e.setTrayTip = [this](const QString &tip) { m_tray.setToolTip(tip); };
    e.setWindowTitle = [this](const QString &title) { setWindowTitle(title); };
    e.repaint = [this] { update(); };
    e.playlistChanged = [this] { ShowPlaylist(); };
    e.markPlaying = [this](int row) { m_playlistControl.markPlaying(row); };
    e.selectEntry = [this](int row) {
        if (SkinListArea *list = m_skin.list(1); list && row < list->count())
            list->setCurrentRow(row);
    };
    e.showPositionSlider = [this](bool visible) { showPositionSlider(visible); };
    e.showPosition = [this](qint64 pos, qint64 length) {
        SkinSliderWidget *slider = m_skin.slider(1);
        if (!slider || slider->dragging() || length <= 0)
            return;
        slider->setValue(double(pos) / double(length));
    };
    e.askText = [this](const QString &prompt, const QString &answer) {
        return QInputDialog::getText(this, QStringLiteral("Velto"), prompt, QLineEdit::Normal,
                                     answer);
    };
    connect(&m_skin, &SkinLoader::sliderReleased, this, [this](int number, double value) {
        if (number == 1)
            m_engine.PlayFrom(qint32(value * m_engine.state().TrackLength));
    });
    // Loading the media engine costs ~100 ms and 40 MiB: never before the window shows.
    connect(this, &frmNeOrb::firstFramePainted, this, [this] {
        // Unless playing brought a cover of its own meanwhile.
        if (!m_startCover.isEmpty() && m_trackInfo.cover().CoverFile.isEmpty())
            m_trackInfo.LoadCover(m_startCover);
        m_startCover.clear();
        m_mediaDevices.preload();
    });
}

// Frame information, cover and lyrics follow the item the engine plays.
void frmNeOrb::wireTrackInfo()
{
    PlaybackEngine &e = m_engine;
    e.onMp3Info = [this](const Mp3Info &info) { m_trackInfo.ShowMp3Info(info); };
    e.LoadTagCover = [this](const QString &album, const QString &artist) {
        m_trackInfo.LoadTagCover(m_engine.state().CurFile, album, artist);
    };
    e.LoadCover = [this](const QString &file) { m_trackInfo.LoadCover(file); };
    e.onTrackStarted = [this](const QString &file) { m_trackInfo.TrackStarted(file); };
    e.onTick = [this](qint64 pos) { m_trackInfo.Tick(pos); };
    m_trackInfo.currentFile = [this] { return m_engine.state().CurFile; };
    m_trackInfo.seek = [this](qint64 pos) { m_engine.PlayFrom(qint32(pos)); };
    m_trackInfo.lightsChanged = [this] { refreshLights(); };
    m_trackInfo.tagSaved = [this](const QString &file) { m_engine.TagSaved(file); };
}

// Slider 1 shows the position while something plays, where the skin has it.
void frmNeOrb::showPositionSlider(bool visible)
{
    const QList<SkinSlider> &sliders = m_skin.skin().sliders;
    const bool placed = std::any_of(sliders.begin(), sliders.end(),
                                    [](const SkinSlider &s) { return s.number == 1; });
    if (SkinSliderWidget *slider = m_skin.slider(1))
        slider->setVisible(visible && placed);
}

// Slider 2 is the volume, slider 3 the balance with its caption on label 25;
// the engine's devices and the volume commands reach the volume control.
void frmNeOrb::wireVolume()
{
    const auto showKnob = [this](int number, double value) {
        if (SkinSliderWidget *slider = m_skin.slider(number); slider && !slider->dragging())
            slider->setValue(value);
    };
    m_volume.showBalance = [this](const QString &caption) { m_skin.setLabel(25, caption); };
    m_volume.showVolume = [showKnob](float level) { showKnob(2, level); };
    m_engine.deviceCreated = [this](MediaDevice &device) {
        m_waveVolume.addDevice(&device);
        m_video.addDevice(device);
    };
    m_video.title = [this] { return windowTitle(); };
    m_engine.volumeStep = [this](int direction) {
        m_fade.cancel(); // the user took over
        m_volume.VolumeStep(direction);
    };
    m_engine.toggleMute = [this] { m_volume.ToggleMute(); };
    connect(&m_skin, &SkinLoader::sliderChanged, this, [this](int number, double value) {
        if (number == 2) {
            m_fade.cancel();
            m_volume.setVolumeLevel(float(value));
        } else if (number == 3) {
            m_volume.SetBalance(float(value));
        }
    });
    // The fade counts in steps of the word's channels.
    m_fade.readLevel = [this] { return int(std::lround(m_volume.volumeLevel() * 65535.0)); };
    m_fade.setLevel = [this, showKnob](int level) {
        m_volume.setVolumeLevel(float(level / 65535.0));
        showKnob(2, m_volume.volumeLevel());
    };
    showKnob(2, m_volume.volumeLevel());
    showKnob(3, m_volume.balance());
    m_skin.setLabel(25, m_volume.balanceCaption());
}

void frmNeOrb::refreshLights()
{
    PlayerSwitches s;
    s.introScan = m_flags.IntroScan;
    s.stopAfterItem = m_flags.StopAfterItem;
    s.repeatItem = m_flags.RepeatItem;
    s.shuffle = m_flags.Shuffle;
    s.playing = m_engine.state().playing && !m_engine.state().paused;
    s.paused = m_engine.state().paused;
    s.abLoop = m_engine.state().LoopStart != 0;
    s.continuousPlay = m_settings.ContPB != 0;
    s.scheduleAuto = m_settings.Auto != 0;
    s.snooze = m_settings.Snooze != 0;
    s.ledSign = m_settings.ExEnable == 1;
    s.onTop = isOnTop(m_settings.WinOnTop);
    s.twentyFourHour = m_settings.TimeFmt != 0;
    s.lyrics = m_trackInfo.lyricsLoaded();
    s.muted = m_volume.muted();
    s.mediaMode = !m_engine.state().CDMode;
    s.stopwatchRunning = m_stopwatches.anyRunning();
    m_skin.ShowLights(::ShowLights(s));
}

frmNeOrb::~frmNeOrb() = default;

void frmNeOrb::Load(const QStringList &names, const QString &workingFolder, bool playNow)
{
    m_lifecycle.Load(names, workingFolder, playNow);
    m_scroller.setEnabled(m_settings.ScrollName == 1);
    // Devices open asynchronously, so even an automatic start is silent.
    if (m_settings.StartMute != 0) {
        m_volume.setMuted(true);
        refreshLights();
    }
    ShowPlaylist();
}

void frmNeOrb::DoIt(qint16 cmd)
{
    // Stop also ends a folder scan.
    if (cmd == 10)
        m_playlistControl.cancelScan();
    m_dispatcher.DoIt(cmd);
    // Every switch a command flips shows at once.
    refreshLights();
}

void frmNeOrb::ShowPlaylist()
{
    m_playlistControl.setList(m_skin.list(1));
    m_playlistControl.ShowPlaylist();
}

// The playlist's name (label 8) and count (label 13), as the shipped skins lay them out.
void frmNeOrb::connectPlaylist()
{
    m_playlistControl.showLabels = [this](const QString &name, int count) {
        m_skin.setLabel(8, name);
        m_skin.setLabel(13, QString::number(count));
    };
    m_playlistControl.listFileShown = [this](const QString &file) {
        m_trackInfo.cover().PlaylistLoaded(file);
    };
    m_playlistControl.showScanProgress = [this](int entries) { m_scanBanner.show(entries); };
    m_playlistControl.cdMode = [this] { return m_engine.state().CDMode; };
    m_playlistControl.clearCover = [this] {
        m_startCover.clear();
        m_trackInfo.cover().PlaylistCleared();
    };
    m_playlistControl.savePath = [this](const QString &path) {
        m_config.SaveStr(QStringLiteral("Path"), path);
        m_config.flush();
    };
}

void frmNeOrb::ToggleAux()
{
    if (m_qfind && m_qfind->isVisible())
        m_qfind->hide();
    else
        ShowQuickFind();
}

bool frmNeOrb::clockSkin() const
{
    const QStringList &types = m_skin.skin().types;
    const auto made = [&types](const char *mode) {
        return std::any_of(types.begin(), types.end(), [mode](const QString &t) {
            return t.contains(QLatin1String(mode), Qt::CaseInsensitive);
        });
    };
    return made("CLOCK") && !made("PLAYER") && !made("KARAOKE");
}

void frmNeOrb::ShowQuickFind()
{
    if (!m_qfind)
        m_qfind = std::make_unique<frmQFind>(m_playlist, m_engine, m_settings.AutoCloseQF, this);
    m_qfind->Form_Load();
    m_qfind->show();
    m_qfind->raise();
    m_qfind->activateWindow();
}

void frmNeOrb::dragEnterEvent(QDragEnterEvent *event)
{
    if (!PlaylistControl::droppedPaths(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void frmNeOrb::dropEvent(QDropEvent *event)
{
    const QStringList paths = PlaylistControl::droppedPaths(*event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    m_playlistControl.addPaths(paths);
}

void frmNeOrb::Unload(bool interactive)
{
    m_lifecycle.Unload(interactive);
}

// A folder is scanned while the window comes up, as one the user adds.
void frmNeOrb::AddOpened(const QString &path)
{
    m_playlistControl.addOpened(path);
}

void frmNeOrb::PlayIt()
{
    m_playlistControl.afterScans([this] { m_engine.PlayIt(); });
}

QString frmNeOrb::currentCover() const
{
    const QString shown = m_trackInfo.cover().CoverFile;
    return shown.isEmpty() ? m_startCover : shown;
}

// A big picture would hold up the first frame; it is decoded after it.
void frmNeOrb::SetCover(const QString &file)
{
    if (m_painted)
        m_trackInfo.LoadCover(file);
    else
        m_startCover = file;
}

void frmNeOrb::LoadSkin(const QString &file)
{
    // Key tables name other skins by bare file names, beside the current skin.
    QString path = file;
    if (QFileInfo(file).isRelative() && !m_skin.file().isEmpty())
        path = QFileInfo(m_skin.file()).dir().filePath(file);
    if (!m_skin.LoadSkin(path))
        return;
    const QFileInfo loaded(m_skin.file());
    m_settings.Skin = loaded.fileName();
    m_settings.SkinPath = loaded.absolutePath();
    m_linkList = m_skin.skin().keyTable;
    const auto &areas = m_skin.skin().areas;
    const bool videoBox = std::any_of(areas.begin(), areas.end(),
                                      [](const SkinArea &area) { return area.number == 2; });
    m_video.setVideoBox(videoBox ? m_skin.area(2) : nullptr);
    m_scroller.skinChanged();
    refreshLights();
    showPositionSlider(m_engine.state().playing);
    ShowPlaylist();
}

void frmNeOrb::SelFSkin(int slot)
{
    if (slot >= 0 && slot < int(m_settings.FavSkin.size()) && !m_settings.FavSkin[slot].isEmpty())
        LoadSkin(m_settings.FavSkin[slot]);
}

void frmNeOrb::SelectSkin()
{
    const QString folder = m_settings.SkinPath.isEmpty() ? m_folder.path() : m_settings.SkinPath;
    const QStringList chosen = m_platform.dialogs.openFiles(
        QStringLiteral("Select Skin"), folder, QStringLiteral("Skins (*.skin)|*.skin"));
    if (!chosen.isEmpty())
        LoadSkin(chosen.first());
}

// Not modal: the player goes on while the dialog is open, and OK takes over
// only what the user changed in it.
void frmNeOrb::ShowPrefs()
{
    if (!m_prefs) {
        auto *dialog = new frmPrefs(m_settings, m_autoList, m_platform.dialogs, this);
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

void frmNeOrb::applyPrefs(const frmPrefs &prefs)
{
    const bool wasOnTop = isOnTop(m_settings.WinOnTop);
    prefs.applyTo(m_settings);
    if (prefs.autoListChanged()) {
        m_autoList = prefs.autoList();
        // Written at once: an alarm set tonight must survive a crash before morning.
        if (!SaveAutoList(m_folder.file(QStringLiteral("autolist.txt")), m_autoList))
            m_platform.dialogs.message(
                QStringLiteral("Unable to write the schedule list! Is the file read-only?"));
    }
    if (isOnTop(m_settings.WinOnTop) != wasOnTop)
        SetOnTop(*this, isOnTop(m_settings.WinOnTop));
    if (const QString skin = prefs.chosenSkin(); !skin.isEmpty())
        LoadSkin(skin);
    refreshLights();
    m_skin.setTimeFmt(m_settings.TimeFmt != 0);
    m_clockTick.ShowTime();
    m_scroller.setEnabled(m_settings.ScrollName == 1);
}

void frmNeOrb::WebLink(const QString &url)
{
    QDesktopServices::openUrl(QUrl::fromUserInput(url));
}

void frmNeOrb::paintEvent(QPaintEvent *event)
{
    QPainter p(this);
    if (m_skin.skin().accepted)
        m_skin.paint(p, event->rect());
    else
        paintPlaceholder(p);
    if (!m_painted) {
        m_painted = true;
        QTimer::singleShot(0, this, &frmNeOrb::firstFramePainted);
    }
}

void frmNeOrb::paintPlaceholder(QPainter &p)
{
    // No skin could be loaded: a plain face still lets the user reach the menu.
    QLinearGradient g(0, 0, 0, height());
    g.setColorAt(0, QColor(0x2b, 0x32, 0x3f));
    g.setColorAt(1, QColor(0x14, 0x18, 0x20));
    p.fillRect(rect(), g);
    p.setPen(QColor(0x7f, 0xd8, 0xff));
    p.drawText(rect(), Qt::AlignCenter, QStringLiteral("Velto"));
}

void frmNeOrb::closeEvent(QCloseEvent *event)
{
    // The desktop's close may only hide Velto in the tray; Quit and Ctrl+Q always end it.
    if (event->spontaneous() && m_tray.hidesOnClose(m_settings.ExitMode)) {
        hide();
        event->ignore();
        return;
    }
    m_lifecycle.Unload(true);
    event->accept();
}

void frmNeOrb::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::RightButton) {
        if (m_settings.NoRMB == 0)
            ShowMenu();
        return;
    }
    if (event->button() != Qt::LeftButton)
        return;
    // Wayland lets only the compositor move windows; elsewhere we move it
    // ourselves so the drop can snap to the screen edges.
    if (QGuiApplication::platformName() == QLatin1String("wayland") && windowHandle() &&
        windowHandle()->startSystemMove())
        return;
    m_dragging = true;
    m_dragOffset = event->position().toPoint();
}

void frmNeOrb::mouseMoveEvent(QMouseEvent *event)
{
    if (m_dragging)
        move(event->globalPosition().toPoint() - m_dragOffset);
}

void frmNeOrb::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_dragging)
        return;
    m_dragging = false;
    if (m_settings.WinSnap != 0)
        snapToScreenEdges();
}

void frmNeOrb::wheelEvent(QWheelEvent *event)
{
    // Lists and text areas scroll; past their ends the wheel must not turn into volume.
    for (QWidget *w = childAt(event->position().toPoint()); w && w != this; w = w->parentWidget())
        if (qobject_cast<QAbstractScrollArea *>(w))
            return event->ignore();
    m_fade.cancel();
    m_volume.wheel(event->angleDelta().y());
    event->accept();
}

void frmNeOrb::snapToScreenEdges()
{
    QList<SnapScreen> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens << SnapScreen{screen->availableGeometry(), screen->physicalDotsPerInchX()};
    move(SnapWindow(frameGeometry(), screens));
}
