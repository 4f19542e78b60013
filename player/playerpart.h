#pragma once

#include "playbackengine.h"
#include "playerflags.h"
#include "playlistcontrol.h"
#include "scanbanner.h"
#include "startfiles.h"
#include "trackinfo.h"
#include "videooutput.h"
#include "volumecontrol.h"
#include "volumefade.h"

#include "platform/mediadevicefactory.h"
#include "platform/wavevolume.h"
#include "skin/skinpart.h"

#include <QObject>

#include <memory>

class Clock;
class Dialogs;
class Random;
class SkinSurface;
class frmQFind;
class frmVisLoader;

// The player mode (karaoke included): playback, the playlist, volume and
// balance, the cover, lyrics and track information, videos and quick find.
// It runs the player's command numbers and draws on the skin itself.
class PlayerPart : public QObject, public SkinPart, public StartFiles
{
    Q_OBJECT
public:
    // The settings the player reads; they belong to the settings of the
    // program and outlive the part.
    struct Options
    {
        const QString &MCIDevice;
        const qint16 &PBOverlap;
        const qint16 &UseTagCover;
        const qint16 &FriendlyNames;
        const qint16 &AutoCover;
        const qint16 &AutoCloseQF;
        const qint16 &ClearPLFirst;
        const qint16 &AutoPlay;
        const QString &ValidExt;
        QString &Path;
        QString &VisPLPath;
    };
    struct Services
    {
        SkinSurface &skin;
        Dialogs &dialogs;
        Random &random;
        const Clock &clock;
        QWidget &window; // parent of the player's own windows
        QString noCoverFile;
        // The media engine, loaded when something is first about to play.
        MediaDeviceFactory &devices;
    };

    PlayerPart(PlaylistState &playlist, Options options, Services services);
    ~PlayerPart() override;

    // SkinPart
    QStringList modes() const override;
    void DoIt(qint16 cmd) override;
    void ending(bool interactive) override;
    void skinLoaded() override;
    void clockTick(const QDateTime &now) override;

    // StartFiles
    void addOpened(const QString &path) override;
    void playWhenScanned() override;
    void setStartCover(const QString &file) override; // decoded once the window is on screen
    QString currentCover() const override;
    quint32 outputLevel() const override { return m_wave.waveOutGetVolume(); }
    void restoreOutputLevel(quint32 word) override { m_volume.restore(word); }

    // Files and folders dropped on the window, in their order.
    void addPaths(const QStringList &paths);
    // Files another start of the program handed over: added like a drop,
    // the first of them becomes the current entry, and plays when `play`.
    void openHanded(const QStringList &paths, bool play);
    void windowShown();
    // The list on the skin shows the playlist as it stands (after start-up
    // read the last one).
    void showPlaylist();
    // The mouse wheel over the skin turns the volume.
    void wheel(int angleDelta);
    // A scheduled switch-on plays from silence up; a switch-off stops.
    void switchOn();
    void switchOff();
    void setMuted(bool muted) { m_volume.setMuted(muted); }

    // What the lights show.
    const PlaybackState &state() const { return m_engine.state(); }
    const PlayerFlags &flags() const { return m_flags; }
    bool muted() const { return m_volume.muted(); }
    bool lyricsLoaded() const { return m_trackInfo.lyricsLoaded(); }

    PlaybackEngine &engine() { return m_engine; }
    PlaylistControl &playlist() { return m_playlistControl; }
    TrackInfo &trackInfo() { return m_trackInfo; }
    VolumeControl &volume() { return m_volume; }
    // Velto's output level, which other players follow too.
    WaveVolume &wave() { return m_wave; }
    VolumeFade &fade() { return m_fade; }
    VideoOutput &video() { return m_video; }
    frmQFind *quickFind() const { return m_qfind.get(); }
    frmVisLoader *visSelector() const { return m_visLoader.get(); }
    qint32 markPos() const { return m_markPos; }

signals:
    // The window's title and the tray's tool tip.
    void titlesChanged(const QString &title, const QString &trayTip);
    // What the lights show may have changed.
    void stateChanged();
    // A file dialog the user confirmed chose this folder.
    void pathChosen(const QString &path);
    void ExDevOut(const QString &text);

private:
    // Starts playback once the media engine is loaded; the window never waits
    // for it. A later start, or Stop, replaces one still waiting.
    void startWhenLoaded(std::function<void()> start);
    void playWhenLoaded();
    void toggle(bool PlayerFlags::*flag);
    void ShowQuickFind();
    void ToggleAux();
    void ShowVisSelect();

    PlaylistState &m_playlistState;
    Options m_options;
    Services m_svc;
    PlayerFlags m_flags;
    PlaybackEngine m_engine;
    WaveVolume m_wave;
    VolumeControl m_volume;
    VolumeFade m_fade;
    PlaylistControl m_playlistControl;
    TrackInfo m_trackInfo;
    VideoOutput m_video;
    ScanBanner m_scanBanner;
    std::unique_ptr<frmQFind> m_qfind;
    std::unique_ptr<frmVisLoader> m_visLoader;
    qint32 m_markPos = 0;
    std::function<void()> m_waitingStart;
    QString m_startCover; // the last run's cover, until the window is on screen
    bool m_shown = false;
    QString m_title = QStringLiteral("Velto");
};
