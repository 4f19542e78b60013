#pragma once

#include "id3tag.h"
#include "mp3info.h"
#include "playerflags.h"
#include "playlist.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariant>

#include <array>
#include <functional>
#include <memory>

class Dialogs;
class MediaDevice;
class Random;
class SkinSurface;

// What the engine knows about the item that plays.
struct PlaybackState
{
    QString CurFile;        // full path of the item
    QString CurDevice;      // device type, "cdaudio", "Delay", or empty when nothing opened
    int CurMci = 0;         // which of the two devices is the current one
    qint32 TrackLength = 0; // ms; 5000 for a picture
    qint32 PlayPos = 0;     // ms, as the last tick read it
    qint32 TrackStart = 0;  // ms into the medium (a CD track); 0 for files
    bool CDMode = false;
    bool ShowRemaining = false; // the time counts down
    bool playing = false;
    bool paused = false;
    qint32 LoopStart = 0; // A-B loop, ms; 0 when not set
    qint32 LoopEnd = 0;
};

// Plays the playlist: picks a device for each entry by its extension, follows
// the position on a 100 ms tick and moves on at the end of each item. Two
// devices take turns, so with an overlap ("PBOverlap") the next item starts
// while the last one finishes.
//
// The engine writes its titles, time and position onto the skin itself and
// tells the other parts what happens through its signals. Devices come from
// the factory given, the real ones from the media engine module or, in
// tests, the same module with silent output.
class PlaybackEngine : public QObject
{
    Q_OBJECT
public:
    using DeviceFactory = std::function<std::unique_ptr<MediaDevice>()>;

    // The settings the engine reads each time it needs them; they belong to
    // whoever made the engine and outlive it.
    struct Options
    {
        const QString &MCIDevice;
        const qint16 &PBOverlap; // ms
        const qint16 &UseTagCover;
        const qint16 &FriendlyNames;
    };

    // Track labels that ShowTitles fills, as the shipped skins number them.
    static constexpr int kTypeLabel = 4;
    static constexpr int kNameLabel = 1;
    static constexpr int kNumberLabel = 6;
    static constexpr int kLengthLabel = 7;
    // Digit groups: playing time in seconds, track number, scrolling name.
    static constexpr int kTimeGroup = 0;
    static constexpr int kNumberGroup = 1;
    static constexpr int kNameGroup = 2;
    static constexpr int kPositionSlider = 1;
    static constexpr int kTickMs = 100;
    static constexpr qint32 kPictureMs = 5000;

    PlaybackEngine(PlaylistState &playlist, PlayerFlags &flags, Options options, SkinSurface &skin,
                   Dialogs &dialogs, Random &random, DeviceFactory makeDevice);
    ~PlaybackEngine() override;
    PlaybackEngine(const PlaybackEngine &) = delete;
    PlaybackEngine &operator=(const PlaybackEngine &) = delete;

    void StopIt();
    void PauseIt();
    void PlayIt();
    void PrevTrack();
    void NextTrack();
    void Reverse();
    void Forward();
    void PlayPause();
    // Offers the position command 31 marked (when there is one) as the answer.
    void JumpTo(qint32 markPos);
    qint32 currentPosition() const { return m_state.PlayPos; }
    // Switches the time display between elapsed and remaining (ShowRemaining).
    void ToggleRemaining()
    {
        m_state.ShowRemaining = !m_state.ShowRemaining;
        m_shownSeconds = -1;
    }
    // Plays the playlist entry at the list's 0-based selected index.
    void PlSelAct(int selectedIndex);
    // A-B loop: sets the start, then the end, then clears both.
    void LoopPoint();

    void RndTrack();
    // The end of an item: the next entry, a random one, or the same again.
    void PlayNext();
    // Seeks within the item; clamped to 0 and to one second before the end.
    void PlayFrom(qint32 pos);
    void GetPlayPos();
    void Timer1_Timer();
    void ShowTitles();
    // The flags or the playing state changed: the lights follow.
    void ShowLights() { emit stateChanged(); }
    // Plays a file that is not in the playlist yet: it is added at the end.
    void PlayFile(const QString &path);
    // Media files or the audio CD: whatever plays stops, and from now on the
    // entries are files, or the tracks of the disc (on the "cdaudio" device,
    // each track a stream of its own).
    void setCDMode(bool on);
    // Shut-down: both devices closed, the tick stopped.
    void CloseDevices();
    // A tag was written into `file`: when it is the item playing, the tray
    // tip and titles show the new one.
    void TagSaved(const QString &file);
    // A new skin shows the position slider only while something plays.
    void skinLoaded();

    const PlaybackState &state() const { return m_state; }
    // The tag of the current item; the blank record for anything but MP3.
    const TagRecord &tag() const { return m_tag; }
    bool tickRunning() const { return m_timer1.isActive(); }
    // Null until the instance is first used.
    MediaDevice *device(int instance) const;

    // What the user typed to JumpTo: an entry number, or a time in the item.
    struct JumpTarget
    {
        enum class Kind { None, Entry, Time } kind = Kind::None;
        qint64 value = 0; // entry number, or ms
    };
    static JumpTarget parseJump(const QString &text);

signals:
    // The window's title and the tray's tool tip for the item.
    void titlesChanged(const QString &title, const QString &trayTip);
    // Playing, paused, the flags or the loop changed: what the lights show.
    void stateChanged();
    // A line for the external display.
    void ExDevOut(const QString &text);
    // The playlist's names changed (a missing file was marked, a file added).
    void playlistChanged();
    // The entry to select in the list, and the one that plays now.
    void entryShown(int row);
    void entryPlaying(int row);
    // What the other parts follow: the cover, the frame information, the
    // lyrics, the position.
    void coverWanted(const QString &file);
    void tagCoverWanted(const QString &album, const QString &artist);
    void mp3Info(const Mp3Info &info);
    // Once the item is open.
    void trackStarted(const QString &file);
    // Each tick while playing, after the position was read.
    void ticked(qint64 posMs);
    void deviceCreated(MediaDevice *device);
    // Entries the CD part plays: a disc image (a .cue) and a CD track file
    // ("Track05.cda"), met among the media files.
    void discImageWanted(const QString &cueSheet);
    void cdTrackWanted(int track);

private:
    MediaDevice &instance(int index);
    qint16 randomTrack();
    void clearTrackLabels();
    void startDelayItem();
    void openCurrent();
    void started(bool showPlaying);
    void deviceOpened(int index);
    void deviceEnded(int index);
    void deviceFailed(int index);
    void learnLength();
    void letFinishOrStop(int index, qint16 overlap);
    QString displayName() const;

    PlaylistState &m_playlist;
    PlayerFlags &m_flags;
    Options m_options;
    SkinSurface &m_skin;
    Dialogs &m_dialogs;
    Random &m_random;
    DeviceFactory m_makeDevice;

    PlaybackState m_state;
    TagRecord m_tag;
    std::array<std::unique_ptr<MediaDevice>, 2> m_devices;
    std::array<bool, 2> m_opening{};
    // PlayIt asked for playback and no StopIt has come since.
    bool m_starting = false;
    qint32 m_shownSeconds = -1; // what the time display shows; -1 to draw anew
    QTimer m_timer1;
};
