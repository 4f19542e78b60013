#pragma once

#include "app/frmicon.h"
#include "app/keyboardinput.h"
#include "app/popupmenu.h"
#include "app/scanbanner.h"
#include "app/trackinfo.h"
#include "app/videooutput.h"
#include "app/windowflags.h"
#include "core/clocktick.h"
#include "core/commandtargets.h"
#include "core/dispatcher.h"
#include "core/lifecycle.h"
#include "core/menumodel.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "platform/mediadevicefactory.h"
#include "platform/wavevolume.h"
#include "player/playbackengine.h"
#include "player/playlist.h"
#include "player/playlistcontrol.h"
#include "player/volumecontrol.h"
#include "player/volumefade.h"
#include "radio/fmtuner.h"
#include "radio/webbrowser.h"
#include "radio/webradio.h"
#include "skin/namescroller.h"
#include "skin/skinloader.h"
#include "tools/calculator.h"
#include "tools/mixer.h"
#include "tools/notepad.h"
#include "tools/stopwatches.h"

#include <QCoreApplication>
#include <QCursor>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <memory>

class Clock;
class frmPrefs;
class Dialogs;
class frmQFind;
class QPainter;
class Random;
class Screens;
class SettingsStore;

// The main window: owns the parts of the program, forwards events to them, and
// carries out the commands that concern the window itself.
class frmNeOrb : public QWidget, public LifecycleHost, public WindowCommands
{
    Q_OBJECT
public:
    struct Platform
    {
        SettingsStore &store;
        Dialogs &dialogs;
        Clock &clock;
        Random &random;
        Screens &screens;
    };

    frmNeOrb(Platform platform, ProgramFolder folder, QWidget *parent = nullptr);
    ~frmNeOrb() override;

    void Load(const QStringList &names, const QString &workingFolder, bool playNow = false);
    // Shut-down without closing, for the end of the desktop session.
    void Unload(bool interactive);
    void DoIt(qint16 cmd);

    Settings &settings() { return m_settings; }
    PlaylistState &playlist() { return m_playlist; }
    const SkinLoader &skin() const { return m_skin; }
    SkinLoader &skin() { return m_skin; }
    frmIcon &tray() { return m_tray; }
    // Its setter is the volume control; a switch-on fades up to the level in use.
    VolumeFade &volumeFade() { return m_fade; }

    // LifecycleHost
    QPoint windowPos() const override { return pos(); }
    QSize windowSize() const override { return size(); }
    void moveWindow(QPoint p) override { move(p); }
    void minimiseWindow() override { setWindowState(windowState() | Qt::WindowMinimized); }
    void ExDevOut(const QString &) override {}
    void createSecondaryWindows() override {}
    void ClearInf() override {}
    void LoadAutoList(const QString &file) override;
    void LoadStations(const QString &) override {}
    void LoadWebRadio(const QString &) override {}
    void PrepareFmTuner() override {}
    void LoadCvtFile(const QString &) override {}
    void MakeDayStr() override { m_clockTick.MakeDayStr(); }
    void InitTimers() override;
    void AddOpened(const QString &path) override;
    void PlayIt() override;
    QString currentCover() const override;
    void SetCover(const QString &file) override;
    quint32 outputLevel() const override { return m_waveVolume.waveOutGetVolume(); }
    void restoreOutputLevel(quint32 word) override { m_volume.restore(word); }
    void MuteFmTuner() override {}
    void CloseDevices() override { m_engine.CloseDevices(); }

    // WindowCommands
    // Closing a window hidden in the tray runs the shut-down but would not end the program.
    void Quit() override
    {
        if (close())
            QCoreApplication::quit();
    }
    void Minimise() override { showMinimized(); }
    void ShowPrefs() override;
    void SelectSkin() override;
    void ShowAux16() override { m_trackInfo.ShowAux16(); }
    void ToggleAux() override;
    void ShowVisSelect() override {}
    void ShowMenu() override { m_popup.popup(QCursor::pos()); }
    void ShowTrackInfo() override { m_trackInfo.ShowTrackInfo(); }
    void ShowQuickFind() override;
    void LoadSkin(const QString &file) override; // also LifecycleHost
    QString currentSkinFile() const override { return m_skin.file(); }
    void WebLink(const QString &url) override;
    bool clockSkin() const override;

signals:
    void firstFramePainted();

protected:
    void paintEvent(QPaintEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void paintPlaceholder(QPainter &p);
    // All lights from the state of the parts: the one place they are decided.
    void refreshLights();
    void showStopwatch(const QString &text);
    void ShowPlaylist();
    void connectPlaylist();
    ClockTick::Actions clockActions();
    void wireEngine();
    void wireTrackInfo();
    void wireVolume();
    void showPositionSlider(bool visible);
    void switchOn(int preset);
    void switchOff();
    void applyPrefs(const frmPrefs &prefs);
    void snapToScreenEdges();
    // Loads the skin of a favourite slot (0 to 9); an empty slot does nothing.
    void SelFSkin(int slot);

    Platform m_platform;
    ProgramFolder m_folder;
    Settings m_settings;
    PlaylistState m_playlist;
    ConfigStore m_config;
    Lifecycle m_lifecycle;
    SkinLoader m_skin;

    PlayerFlags m_flags;
    // Loads the media engine module after the first frame (or at the first play).
    MediaDeviceFactory m_mediaDevices;
    PlaybackEngine m_engine;
    // After the engine: it holds the engine's devices, so it must go first.
    WaveVolume m_waveVolume;
    VideoOutput m_video{*this};
    VolumeControl m_volume{m_waveVolume};
    PlaylistControl m_playlistControl;
    Calculator m_calculator;
    Stopwatches m_stopwatches;
    Notepad m_notepad;
    FmTuner m_fm;
    WebBrowser m_web;
    WebRadio m_webRadio;
    Mixer m_mixer{m_platform.dialogs};
    qint32 m_markPos = 0;
    qint16 m_wrPresetIdx = 0;
    QStringList m_linkList = QStringList(21);
    Dispatcher m_dispatcher;
    PopupMenu m_popup{{[this](qint16 cmd) { DoIt(cmd); }, [this](int slot) { SelFSkin(slot); },
                       [this] { SetOnTop(*this, isOnTop(m_settings.WinOnTop)); }},
                      m_settings.WinOnTop};
    frmIcon m_tray{*this, m_popup};

    QStringList m_autoList;
    ClockTick m_clockTick;
    QTimer m_timer2;
    // Raises the volume after a scheduled switch-on; Timer2 drives it.
    VolumeFade m_fade;
    QPointer<frmPrefs> m_prefs;

    TrackInfo m_trackInfo{{m_skin, m_platform.dialogs, m_settings, m_playlist,
                           m_folder.file(QStringLiteral("nocover.bmp")), this}};
    QPoint m_dragOffset; // mouse position within the window while dragging
    bool m_dragging = false;
    bool m_painted = false;
    QString m_startCover; // the last run's cover, until the first frame is up

    std::unique_ptr<frmQFind> m_qfind;
    ScanBanner m_scanBanner{*this, m_skin};
    KeyboardInput m_keys{*this, m_skin};
    NameScroller m_scroller{m_skin};
};
