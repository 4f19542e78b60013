#pragma once

#include "id3tag.h"
#include "mp3info.h"
#include "playercommands.h"
#include "playlist.h"

#include <QString>
#include <QTimer>
#include <QVariant>

#include <array>
#include <functional>
#include <memory>

class Dialogs;
class MediaDevice;
class Random;

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
// Everything the engine shows goes out through the hooks below, which the
// main window wires to the skin, the tray and the other parts; unset hooks
// are skipped. Devices come from the factory given, the real ones from the
// media engine module or, in tests, the same module with silent output.
class PlaybackEngine : public PlayerCommands
{
public:
    using DeviceFactory = std::function<std::unique_ptr<MediaDevice>()>;

    // The settings the engine reads each time it needs them.
    struct Options
    {
        QString MCIDevice = QStringLiteral("0");
        qint16 PBOverlap = 0; // ms
        qint16 UseTagCover = 0;
        bool friendlyNames = true;
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
    static constexpr int kTickMs = 100;
    static constexpr qint32 kPictureMs = 5000;

    PlaybackEngine(PlaylistState &playlist, PlayerFlags &flags, Dialogs &dialogs, Random &random,
                   DeviceFactory makeDevice);
    ~PlaybackEngine() override;
    PlaybackEngine(const PlaybackEngine &) = delete;
    PlaybackEngine &operator=(const PlaybackEngine &) = delete;

    // PlayerCommands
    void StopIt() override;
    void PauseIt() override;
    void PlayIt() override;
    void EjectIt() override {} // with the audio CD
    void PrevTrack() override;
    void NextTrack() override;
    void Reverse() override;
    void Forward() override;
    void PlayPause() override;
    void ToggleCDMode() override {} // with the audio CD
    void JumpTo(qint32 markPos) override;
    void ShowLights() override;
    qint32 currentPosition() const override { return m_state.PlayPos; }
    void ToggleRemaining() override
    {
        m_state.ShowRemaining = !m_state.ShowRemaining;
        m_shownSeconds = -1;
    }
    void VolumeStep(int direction) override;
    void ToggleMute() override;
    void PlSelAct(int selectedIndex) override;
    void LoopPoint() override;

    void RndTrack();
    // The end of an item: the next entry, a random one, or the same again.
    void PlayNext();
    // Seeks within the item; clamped to 0 and to one second before the end.
    void PlayFrom(qint32 pos);
    void GetPlayPos();
    void Timer1_Timer();
    void ShowTitles();
    // Plays a file that is not in the playlist yet: it is added at the end.
    void PlayFile(const QString &path);
    // Shut-down: both devices closed, the tick stopped.
    void CloseDevices();
    // A tag was written into `file`: when it is the item playing, the tray
    // tip and titles show the new one.
    void TagSaved(const QString &file);

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

    std::function<Options()> options;

    // Output: the skin, the tray, the window.
    std::function<void(int label, const QString &text)> setLabel;
    std::function<void(int group, const QVariant &value)> SetDD;
    std::function<void(const QString &text)> setTrayTip;
    std::function<void(const QString &text)> setWindowTitle;
    std::function<void()> showLights;
    std::function<void()> repaint;
    std::function<void(bool visible)> showPositionSlider;
    std::function<void(qint64 posMs, qint64 lengthMs)> showPosition;
    std::function<void(const QString &text)> ExDevOut;
    // The playlist's names changed (a missing file was marked, a file added).
    std::function<void()> playlistChanged;
    std::function<void(int row)> selectEntry;
    // The entry that plays now, to stand out in the list.
    std::function<void(int row)> markPlaying;

    // The other parts that follow playback.
    std::function<void(const QString &file)> LoadCover;
    std::function<void(const QString &album, const QString &artist)> LoadTagCover;
    std::function<void(const Mp3Info &info)> onMp3Info;
    // Once the item is open: its lyrics are loaded here.
    std::function<void(const QString &file)> onTrackStarted;
    // Each tick while playing, after the position was read.
    std::function<void(qint64 posMs)> onTick;
    std::function<void(MediaDevice &device)> deviceCreated;
    std::function<void(int direction)> volumeStep;
    std::function<void()> toggleMute;
    // A CD track, when the audio CD part is there to play it.
    std::function<void(int track)> playCdTrack;
    // Asks for a line of text, offering `answer`; empty when the user cancels.
    std::function<QString(const QString &prompt, const QString &answer)> askText;

private:
    MediaDevice &instance(int index);
    Options currentOptions() const;
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
