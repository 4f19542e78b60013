#pragma once

#include "platform/mediadevice.h"

#include <QByteArrayList>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <atomic>
#include <cstdint>
#include <memory>

struct mpv_handle;
struct mpv_event;
struct mpv_event_property;
class MpvRenderer;

// One libmpv player per device. Every call into mpv from the UI thread is
// asynchronous or a property read of the client's own cache, so nothing here
// waits for a file to load.
class MpvDevice : public QObject, public MediaDevice
{
public:
    // Options are "name=value" pairs applied after the fixed ones (ao=null ...).
    explicit MpvDevice(const QByteArrayList &options);
    ~MpvDevice() override;

    void open() override;
    void close() override;
    void play() override;
    void stop() override;
    void pause() override;
    void resume() override;
    void seek(qint64 ms) override;
    void setGains(double left, double right) override;
    QWidget *createVideoView(QWidget *parent) override;
    QSize videoSize() const override
    {
        return m_pictures == Pictures::Shown ? m_videoSize : QSize();
    }

    qint64 length() const override { return m_state == State::Open ? m_length : 0; }
    qint64 position() const override;
    Mode mode() const override;
    StreamInfo streamInfo() const override { return m_stream; }
    FileTags fileTags() const override { return m_state == State::Open ? m_fileTags : FileTags(); }

private:
    enum class State { Closed, Loading, Open };

    void preloaded(uint64_t hook);
    void tracksKnown(bool pictures);
    void drainEvents();
    void handleEvent(const mpv_event &event);
    void propertyChanged(const mpv_event_property &property);
    void endOfEntry();
    void reachedEnd();
    void finishLoading();
    void fail(int error, const QString &text);
    void setPaused(bool paused);
    void seekNow(qint64 ms);
    void holdPosition(qint64 ms);
    void takePosition(double seconds);
    void setBalanceFilter(double balance);
    void askVideoSize();
    void showVideo();
    void hideVideo();
    void observeStream(bool on);
    void streamPropertyChanged(const mpv_event_property &property);
    void updateStream();

    mpv_handle *m_mpv = nullptr;
    State m_state = State::Closed;
    Mode m_mode = Mode::NotReady;

    // Each open() is one generation; mpv's replies and events about an older
    // file are recognised by its playlist entry and dropped.
    uint32_t m_generation = 0;
    int64_t m_entry = -1;
    int64_t m_startedEntry = -1;
    int64_t m_loadedEntry = -1;
    struct Ended
    {
        int64_t entry = -1;
        int reason = 0;
        int error = 0;
    } m_ended;
    bool m_durationKnown = false;
    bool m_tagsKnown = false;
    FileTags m_fileTags;
    // mpv answers a seek when it queues it, and a restart already on its
    // way (the file's first, or an earlier seek's) may come before the seek
    // runs: only the restart after mpv announced the seek itself ends it.
    enum class Seek { None, Sent, Queued, Running };
    Seek m_seek = Seek::None;
    int m_seeksUnanswered = 0;
    bool m_wantPlay = false;

    qint64 m_length = 0;
    // Set when the file itself tells its length better than mpv (FLI, FLC).
    qint64 m_headerLength = 0;
    // "af" holds the balance filter.
    bool m_balanceFilter = false;
    qint64 m_position = 0;     // as mpv last told it, or held
    QElapsedTimer m_sampledAt; // when mpv told it; invalid while held
    mutable bool m_positionAsked = false;
    // Right after a seek mpv may report a time just before its target (seen:
    // 188 ms, about the silent output's buffer), though nothing before the
    // target plays: the time is held at the target until mpv's passes it.
    qint64 m_seekFloor = -1;
    qint64 m_pendingSeek = -1;
    std::atomic<bool> m_drainPosted{false};

    // Made for the first file with pictures and kept: mpv must never have
    // its output replaced while a file plays.
    std::unique_ptr<MpvRenderer> m_renderer;
    bool m_cannotDraw = false;
    uint64_t m_hook = 0; // the load mpv waits on while the tracks are read
    QSize m_videoSize;   // of the file being opened or open
    // Once over, the pictures of a file stay over.
    enum class Pictures { None, Shown, Over } m_pictures = Pictures::None;

    // A network stream: what its properties said last, and what it tells.
    bool m_isStream = false;
    struct
    {
        bool loaded = false; // mpv read the stream's start
        bool pausedForCache = false;
        bool coreIdle = true;
        bool ended = false;
        int cacheState = 0;
        QString title, name;
        int bitRate = 0;
    } m_streamProps;
    StreamInfo m_stream;
};
