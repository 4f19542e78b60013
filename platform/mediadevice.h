#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <functional>
#include <utility>

class QWidget;

// What the playback engine needs of a media-control device: set the device
// type and file name, open, play, stop, seek, and read length, position, mode
// and the last error, all in milliseconds.
//
// Opening is asynchronous: open() returns at once, and either `opened` or
// `failed` follows from the event loop. play(), seek() and setFrom() may be
// called while the device is still opening; they take effect once it is open.
//
// The class is header-only on purpose: the mpv-backed device lives in a module
// loaded at run time, and it must not carry a second copy of anything that
// lives in the executable.
class MediaDevice
{
public:
    // Numbered once and for all, independent of the engine behind the device.
    enum class Mode { NotReady = 524, Stopped = 525, Playing = 526, Paused = 529, Open = 530 };

    static constexpr int NoError = 0;
    static constexpr int DeviceNotInstalled = 263;
    static constexpr int CannotOpen = 274;
    static constexpr int UnknownFormat = 277;

    // Callbacks run on the thread that owns the device, from the event loop,
    // never from inside a call into the device. A callback may close or
    // destroy the device.
    struct Events
    {
        std::function<void()> opened;
        std::function<void()> ended;
        // A newer position came in. The mpv device learns one only when
        // position() is read while playing.
        std::function<void(qint64 ms)> positionChanged;
        std::function<void(int error, const QString &text)> failed;
    };

    virtual ~MediaDevice() = default;

    static QStringList knownDeviceTypes()
    {
        return {QStringLiteral("MPEGVideo"),   QStringLiteral("MPEGVideo2"),
                QStringLiteral("ActiveMovie"), QStringLiteral("M4W_MCI"),
                QStringLiteral("Animation"),   QStringLiteral("Animation1"),
                QStringLiteral("MMMovie")};
    }
    // Exact and case-sensitive, as every comparison of device names is.
    static bool isKnownDeviceType(const QString &type) { return knownDeviceTypes().contains(type); }
    // The "cdaudio" device plays one thing: a track of a disc, named as
    // cdTrackUrl() (platform/cddrive.h) names it.
    static bool isCdTrack(const QString &type, const QString &file)
    {
        return type == QLatin1String("cdaudio") && file.startsWith(QLatin1String("cdtrack://"));
    }

    static QString modeName(Mode mode)
    {
        switch (mode) {
        case Mode::NotReady:
            return QStringLiteral("not ready");
        case Mode::Stopped:
            return QStringLiteral("stopped");
        case Mode::Playing:
            return QStringLiteral("playing");
        case Mode::Paused:
            return QStringLiteral("paused");
        case Mode::Open:
            return QStringLiteral("open");
        }
        return QString();
    }

    void setEvents(Events events) { m_events = std::move(events); }

    // Pictures are drawn only into the view the device made last; without one
    // they are dropped and the sound plays on. `started` comes once the open
    // file shows pictures, `stopped` when its item ends or is closed.
    struct VideoEvents
    {
        std::function<void(QSize size)> started;
        std::function<void()> stopped;
    };
    void setVideoEvents(VideoEvents events) { m_videoEvents = std::move(events); }
    // Replaces the device's earlier view, if any; null when it shows no pictures.
    virtual QWidget *createVideoView(QWidget *parent)
    {
        (void)parent;
        return nullptr;
    }
    // The pictures' display size; empty while the open file has none.
    virtual QSize videoSize() const { return {}; }

    // What a network stream tells while it plays; a file tells nothing.
    struct StreamInfo
    {
        QString title;   // what is on air: the ICY title, or the stream's title tag
        QString name;    // the station's own name: the ICY name, or the artist tag
        int bitRate = 0; // bits per second, 0 while unknown
        // Waiting for data: before the first sound, and whenever the stream
        // runs dry until enough has come in again.
        bool buffering = false;
        int bufferPercent = 0; // 0 to 100, while buffering
        bool operator==(const StreamInfo &) const = default;
    };
    virtual StreamInfo streamInfo() const { return {}; }
    // `changed` runs whenever streamInfo() would read differently.
    struct StreamEvents
    {
        std::function<void()> changed;
    };
    void setStreamEvents(StreamEvents events) { m_streamEvents = std::move(events); }

    // What the open file's own tags say (ID3v2, Vorbis comments, MP4 atoms),
    // known from `opened` on. A stream's come with streamInfo() instead.
    struct FileTags
    {
        QString title;
        QString artist;
        QString album;
        bool operator==(const FileTags &) const = default;
    };
    virtual FileTags fileTags() const { return {}; }

    // An unknown type is accepted here and refused by open() with 263.
    void setDeviceType(const QString &type) { m_deviceType = type; }
    QString deviceType() const { return m_deviceType; }
    // A local path, or a network address ("http://...") of a stream, which
    // opens with length 0 and plays until it ends or is stopped.
    void setFileName(const QString &path) { m_fileName = path; }
    QString fileName() const { return m_fileName; }

    // Clears the last error, then starts opening. Returns at once.
    virtual void open() = 0;
    // Unloads the file; a pending open is abandoned without any callback.
    virtual void close() = 0;
    // Plays from the position set by setFrom(), if any, else from where it is.
    virtual void play() = 0;
    // Halts and keeps the position, so play() goes on from there.
    virtual void stop() = 0;
    virtual void pause() = 0;
    virtual void resume() = 0;
    // Clamped to 0..length(). The position reads the target at once.
    virtual void seek(qint64 ms) = 0;
    // The start position for the next play().
    void setFrom(qint64 ms) { m_from = ms; }

    // Velto's own output level for the left and the right channel, linear
    // from 0 to 1. It stays set across files and applies from the next sound
    // on, also while playing; the desktop's master volume is never touched.
    virtual void setGains(double left, double right)
    {
        m_leftGain = clampGain(left);
        m_rightGain = clampGain(right);
    }
    double leftGain() const { return m_leftGain; }
    double rightGain() const { return m_rightGain; }

    // 0 until the device is open.
    virtual qint64 length() const = 0;
    virtual qint64 position() const = 0;
    virtual Mode mode() const = 0;
    int errorNumber() const { return m_error; }
    QString errorText() const { return m_errorText; }

protected:
    Events m_events;
    VideoEvents m_videoEvents;
    StreamEvents m_streamEvents;
    QString m_deviceType;
    QString m_fileName;
    qint64 m_from = -1; // -1: play from where the device is
    int m_error = NoError;
    QString m_errorText;
    double m_leftGain = 1.0;
    double m_rightGain = 1.0;

private:
    static double clampGain(double gain)
    {
        return gain >= 0 && gain <= 1 ? gain : gain > 1 ? 1 : 0;
    }
};
