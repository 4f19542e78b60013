#pragma once

#include <QString>
#include <QStringList>

// What the desktop's media controls (MPRIS2 on D-Bus) may see and do of a
// player, in plain values: the service turns it into the bus's properties,
// methods and signals and knows nothing else of the program.
class MprisPlayer
{
public:
    enum class Status { Playing, Paused, Stopped };

    struct Track
    {
        QString id; // unique per entry, letters, digits and "_"; empty for none
        qint64 lengthUs = 0;
        QString title;
        QStringList artists;
        QString album;
        QString artUrl; // file:// of the picture shown
        QString url;    // file:// of the item
        bool operator==(const Track &) const = default;
    };

    // Everything the bus announces when it changes; the position is read
    // on demand and only announced when it jumps (seeked).
    struct State
    {
        Status status = Status::Stopped;
        Track track;
        double volume = 1.0; // 0 to 1
        bool shuffle = false;
        bool loopTrack = false;
        bool canGoNext = false;
        bool canGoPrevious = false;
        bool canPlay = false;
        bool canPause = false;
        bool canSeek = false;
        bool operator==(const State &) const = default;
    };

    virtual ~MprisPlayer() = default;

    virtual State state() = 0;
    virtual qint64 positionUs() = 0;

    virtual void play() = 0;
    virtual void pause() = 0;
    virtual void playPause() = 0;
    virtual void stop() = 0;
    virtual void next() = 0;
    virtual void previous() = 0;
    // Within the current track, 0 to its length.
    virtual void setPositionUs(qint64 position) = 0;
    virtual void setVolume(double volume) = 0; // 0 to 1
    virtual void setShuffle(bool on) = 0;
    virtual void setLoopTrack(bool on) = 0;
    // A file:// address to add and play.
    virtual void openUri(const QString &uri) = 0;
    virtual void raise() = 0;
    virtual void quit() = 0;
};
