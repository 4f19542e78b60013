#include "mpvdevice.h"

#include "cdtrackstream.h"
#include "midistream.h"
#include "mpvvideoview.h"
#include "platform/fliheader.h"
#include "platform/readfile.h"
#include "platform/streamtext.h"
#include "postonce.h"

#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QtDebug>

#include <mpv/client.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstring>

namespace {

enum ReplyKind : uint64_t {
    LoadReply = 1,
    SeekReply = 2,
    OtherReply = 3,
    DurationReply = 4,
    VideoReply = 5,
    PositionReply = 6,
    StreamObserver = 7,
    TracksReply = 8,
    PreloadHook = 9,
    TagsReply = 10,
    EofReply = 11
};

uint64_t replyId(ReplyKind kind, uint32_t generation)
{
    return (uint64_t(kind) << 32) | generation;
}

qint64 toMs(double seconds)
{
    if (!std::isfinite(seconds) || seconds < 0)
        return 0;
    return qint64(std::llround(seconds * 1000.0));
}

// mpv's load errors as the device's own numbers: a format it cannot read is
// 277, anything else that stops a file from opening is 274.
int mciError(int mpvError)
{
    switch (mpvError) {
    case MPV_ERROR_UNKNOWN_FORMAT:
    case MPV_ERROR_NOTHING_TO_PLAY:
        return MediaDevice::UnknownFormat;
    default:
        return MediaDevice::CannotOpen;
    }
}

const mpv_node *valueIn(const mpv_node &map, const char *key, mpv_format format)
{
    if (map.format != MPV_FORMAT_NODE_MAP || !map.u.list)
        return nullptr;
    const mpv_node_list &list = *map.u.list;
    for (int i = 0; i < list.num; ++i) {
        if (std::strcmp(list.keys[i], key) == 0 && list.values[i].format == format)
            return &list.values[i];
    }
    return nullptr;
}

int64_t intIn(const mpv_node &map, const char *key)
{
    const mpv_node *value = valueIn(map, key, MPV_FORMAT_INT64);
    return value ? value->u.int64 : -1;
}

// What mpv read from the "metadata" property. Keys are compared without case:
// Vorbis comments say "TITLE", ID3 says "title".
struct Metadata
{
    QString title, artist, album;
    QString icyTitle, icyName; // a stream's server says these
};

Metadata metadataIn(const mpv_node *map)
{
    Metadata tags;
    if (!map || map->format != MPV_FORMAT_NODE_MAP || !map->u.list)
        return tags;
    const mpv_node_list &list = *map->u.list;
    for (int i = 0; i < list.num; ++i) {
        if (list.values[i].format != MPV_FORMAT_STRING || !list.keys[i])
            continue;
        // mpv hands the bytes on as they came.
        const QString value = streamText(list.values[i].u.string);
        const QByteArray key = QByteArray(list.keys[i]).toLower();
        if (key == "icy-title")
            tags.icyTitle = value;
        else if (key == "icy-name")
            tags.icyName = value;
        else if (key == "title")
            tags.title = value;
        else if (key == "artist")
            tags.artist = value;
        else if (key == "album")
            tags.album = value;
    }
    return tags;
}

// Pictures to show: a video track that is more than a cover (covers are
// never shown, audio-display=no).
bool hasMovingPictures(const mpv_node &trackList)
{
    if (trackList.format != MPV_FORMAT_NODE_ARRAY || !trackList.u.list)
        return false;
    const mpv_node_list &tracks = *trackList.u.list;
    for (int i = 0; i < tracks.num; ++i) {
        const mpv_node *type = valueIn(tracks.values[i], "type", MPV_FORMAT_STRING);
        const mpv_node *cover = valueIn(tracks.values[i], "albumart", MPV_FORMAT_FLAG);
        if (type && std::strcmp(type->u.string, "video") == 0 && !(cover && cover->u.flag))
            return true;
    }
    return false;
}

// How much quieter the softer channel is than the louder one, as the
// stereotools filter counts it: above 0 the left is quieter, below 0 the right.
double balanceOf(double left, double right)
{
    const double louder = std::max(left, right);
    if (louder <= 0 || left == right)
        return 0;
    return left < right ? 1 - left / louder : -(1 - right / louder);
}

qint64 fliLength(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toUpper();
    if (suffix != QLatin1String("FLI") && suffix != QLatin1String("FLC"))
        return 0;
    QFile file;
    if (openRegularFile(file, path, QIODevice::ReadOnly) != FileFault::None)
        return 0;
    const FliHeader header = FliHeader::read(file.read(FliHeader::Size));
    return header.valid ? header.lengthMs : 0;
}

} // namespace

MpvDevice::MpvDevice(const QByteArrayList &options)
{
    // mpv refuses to start unless LC_NUMERIC is C; Qt resets it when the
    // application object is built.
    std::setlocale(LC_NUMERIC, "C");
    m_mpv = mpv_create();
    if (!m_mpv) {
        qWarning("MpvDevice: mpv_create failed; the device cannot open files");
        return;
    }
    // No user configuration, no scripts or key bindings of a standalone
    // player, and audio that keeps its clock even without a sound server.
    // gapless-audio=no: otherwise the end comes ~0.4 s early. Each built-in
    // script runs in a Lua state of its own, some 2.5 MiB apiece, for
    // overlays and a console nobody here can see.
    const char *const fixed[][2] = {
        {"config", "no"},
        {"load-scripts", "no"},
        {"load-stats-overlay", "no"},
        {"load-osd-console", "no"},
        {"load-auto-profiles", "no"},
        {"ytdl", "no"},
        {"audio-fallback-to-null", "yes"},
        {"gapless-audio", "no"},
        {"input-default-bindings", "no"},
        {"osc", "no"},
        {"vo", "libmpv"}, // drawn by MpvRenderer, or "null" when it cannot be
        {"idle", "yes"},
        {"keep-open", "yes"},
        {"terminal", "no"},
        {"audio-display", "no"},
        {"hwdec", "no"},
        {"gpu-hwdec-interop", "no"}, // no probing for GPU decoders we never use
    };
    for (const auto &option : fixed)
        mpv_set_option_string(m_mpv, option[0], option[1]);
    for (const QByteArray &option : options) {
        const qsizetype eq = option.indexOf('=');
        if (eq <= 0)
            continue;
        const QByteArray name = option.left(eq);
        const QByteArray value = option.mid(eq + 1);
        if (mpv_set_option_string(m_mpv, name.constData(), value.constData()) < 0)
            qWarning("MpvDevice: option %s refused", option.constData());
    }
    if (mpv_initialize(m_mpv) < 0) {
        qWarning("MpvDevice: mpv_initialize failed; the device cannot open files");
        mpv_terminate_destroy(m_mpv);
        m_mpv = nullptr;
        return;
    }
    // The picture output is made when the first file with pictures has
    // been read and before mpv sets up its outputs: sound alone never pays
    // for it.
    mpv_hook_add(m_mpv, replyId(PreloadHook, 0), "on_preloaded", 0);
    mpv_observe_property(m_mpv, 0, "duration", MPV_FORMAT_DOUBLE);
    mpv_observe_property(m_mpv, 0, "eof-reached", MPV_FORMAT_FLAG);
    mpv_set_property_string(m_mpv, "pause", "yes");
    if (!MidiStream::registerProtocol(m_mpv))
        qWarning("MpvDevice: the MIDI stream could not be registered; MIDI files will not play");
    if (!CdTrackStream::registerProtocol(m_mpv))
        qWarning("MpvDevice: the CD track stream could not be registered; CDs will not play");

    mpv_set_wakeup_callback(
        m_mpv,
        [](void *context) {
            auto *self = static_cast<MpvDevice *>(context);
            postOnce(self, self->m_drainPosted, [self] { self->drainEvents(); });
        },
        this);
}

MpvDevice::~MpvDevice()
{
    if (!m_mpv)
        return;
    m_renderer.reset(); // before its player goes
    // After this returns no wakeup is running or will run; a drain already
    // queued dies with this QObject.
    mpv_set_wakeup_callback(m_mpv, nullptr, nullptr);
    mpv_terminate_destroy(m_mpv);
}

MediaDevice::Mode MpvDevice::mode() const
{
    return m_state == State::Open ? m_mode : Mode::NotReady;
}

void MpvDevice::open()
{
    close();
    ++m_generation;
    m_error = NoError;
    m_errorText.clear();
    const uint32_t generation = m_generation;
    auto failLater = [this, generation](int error, const QString &text) {
        m_error = error;
        m_errorText = text;
        QMetaObject::invokeMethod(
            this,
            [this, generation, error, text] {
                if (generation == m_generation && m_events.failed)
                    m_events.failed(error, text);
            },
            Qt::QueuedConnection);
    };
    const bool cdTrack = isCdTrack(m_deviceType, m_fileName);
    if (!isKnownDeviceType(m_deviceType) && !cdTrack) {
        failLater(DeviceNotInstalled, QStringLiteral("unknown device type"));
        return;
    }
    if (!m_mpv) {
        failLater(DeviceNotInstalled, QStringLiteral("the media engine could not start"));
        return;
    }
    if (m_fileName.isEmpty()) {
        failLater(CannotOpen, QStringLiteral("no file name"));
        return;
    }
    m_isStream = isNetworkAddress(m_fileName);
    QByteArray path;
    if (m_isStream || cdTrack) {
        path = m_fileName.toUtf8();
        m_headerLength = 0;
    } else {
        // An absolute path never reads as a protocol prefix ("av://", "edl://").
        const QString absolute = QFileInfo(m_fileName).absoluteFilePath();
        path = absolute.toUtf8();
        if (MidiStream::hasMidiName(absolute) && MidiStream::isMidiFile(absolute)) {
            if (MidiStream::soundBank().isEmpty()) {
                failLater(DeviceNotInstalled, MidiStream::missingBankText());
                return;
            }
            path = MidiStream::url(absolute);
        }
        m_headerLength = fliLength(absolute);
    }
    // Balance changes made by command while the last file played live only in
    // its filter; the new file's filter is built from the property, or left
    // out at the centre.
    if (m_balanceFilter)
        setBalanceFilter(balanceOf(m_leftGain, m_rightGain));
    m_state = State::Loading;
    m_mode = Mode::NotReady;
    m_length = 0;
    holdPosition(0);
    m_durationKnown = false;
    // A stream's tags change as it plays: they come with streamInfo().
    m_tagsKnown = m_isStream;
    m_fileTags = {};
    m_videoSize = QSize();
    m_pictures = Pictures::None;
    observeStream(m_isStream);
    setPaused(true);
    const char *command[] = {"loadfile", path.constData(), "replace", nullptr};
    mpv_command_async(m_mpv, replyId(LoadReply, generation), command);
}

void MpvDevice::close()
{
    if (m_state == State::Closed)
        return;
    hideVideo();
    ++m_generation;
    m_state = State::Closed;
    m_mode = Mode::NotReady;
    m_entry = -1;
    m_wantPlay = false;
    m_seek = Seek::None;
    m_seeksUnanswered = 0;
    m_from = -1;
    m_pendingSeek = -1;
    m_length = 0;
    holdPosition(0);
    observeStream(false);
    const char *command[] = {"stop", nullptr};
    mpv_command_async(m_mpv, replyId(OtherReply, m_generation), command);
}

void MpvDevice::setPaused(bool paused)
{
    int flag = paused ? 1 : 0;
    mpv_set_property_async(m_mpv, replyId(OtherReply, m_generation), "pause", MPV_FORMAT_FLAG,
                           &flag);
}

void MpvDevice::play()
{
    if (m_state == State::Loading) {
        m_wantPlay = true;
        setPaused(false);
        return;
    }
    if (m_state != State::Open)
        return;
    if (m_from >= 0) {
        seekNow(m_from);
        m_from = -1;
    } else if (m_length > 0 && m_position >= m_length) {
        // At the end the device stays stopped instead of starting over: the
        // engine decides what comes next.
        return;
    }
    m_mode = Mode::Playing;
    setPaused(false);
}

void MpvDevice::stop()
{
    if (m_state == State::Loading) {
        m_wantPlay = false;
        setPaused(true);
    } else if (m_state == State::Open) {
        holdPosition(position());
        m_mode = Mode::Stopped;
        setPaused(true);
    }
}

void MpvDevice::pause()
{
    stop();
    if (m_state == State::Open)
        m_mode = Mode::Paused;
}

void MpvDevice::resume()
{
    if (mode() == Mode::Paused || m_state == State::Loading)
        play();
}

void MpvDevice::seek(qint64 ms)
{
    if (m_state == State::Loading)
        m_pendingSeek = ms;
    else if (m_state == State::Open)
        seekNow(ms);
}

void MpvDevice::seekNow(qint64 ms)
{
    ms = m_length > 0 ? qBound<qint64>(0, ms, m_length) : qMax<qint64>(0, ms);
    holdPosition(ms);
    m_seekFloor = ms;
    // Times asked for before the seek would move the position back; they
    // are dropped until playback restarts.
    m_seek = Seek::Sent;
    ++m_seeksUnanswered;
    const QByteArray seconds = QByteArray::number(double(ms) / 1000.0, 'f', 3);
    const char *command[] = {"seek", seconds.constData(), "absolute+exact", nullptr};
    mpv_command_async(m_mpv, replyId(SeekReply, m_generation), command);
}

// The gains reach mpv in two parts that both change while playing without a
// break: the louder channel's gain as mpv's volume (cubic: the gain is
// (volume / 100)^3), and the softer channel's share as the balance of a
// stereotools filter, changed by "af-command". Setting "af" itself rebuilds
// the audio chain and loses some 10 ms of sound each time, so while a file
// plays the filter is put in once, when the balance first leaves the centre,
// and stays; the next file opens without it if the balance is back.
void MpvDevice::setGains(double left, double right)
{
    MediaDevice::setGains(left, right);
    if (!m_mpv)
        return;
    const uint64_t id = replyId(OtherReply, m_generation);
    double volume = 100.0 * std::cbrt(std::max(m_leftGain, m_rightGain));
    mpv_set_property_async(m_mpv, id, "volume", MPV_FORMAT_DOUBLE, &volume);
    if (volume <= 0)
        return; // silent: the balance can wait, and a mute costs no rebuild
    const double balance = balanceOf(m_leftGain, m_rightGain);
    if (m_balanceFilter && m_state == State::Open) {
        // mpv reports an error even when the filter took it: the graph's
        // last filter knows no such command.
        const QByteArray value = QByteArray::number(balance, 'f', 6);
        const char *command[] = {"af-command", "velto", "balance_out", value.constData(), nullptr};
        mpv_command_async(m_mpv, id, command);
    } else if (balance != 0 || m_balanceFilter) {
        setBalanceFilter(balance);
    }
}

void MpvDevice::setBalanceFilter(double balance)
{
    m_balanceFilter = balance != 0;
    // The pan makes mono (FC) sound stereo at its full level on both sides.
    const QByteArray filter =
        m_balanceFilter ? "@velto:lavfi=[pan=stereo|FL=FL+FC|FR=FR+FC,stereotools=balance_out=" +
                              QByteArray::number(balance, 'f', 6) + "]"
                        : QByteArray();
    const char *value = filter.constData();
    mpv_set_property_async(m_mpv, replyId(OtherReply, m_generation), "af", MPV_FORMAT_STRING,
                           &value);
}

// Runs while mpv waits between reading a file and choosing its tracks; mpv
// goes on when the hook is continued, so every path here continues it.
void MpvDevice::preloaded(uint64_t hook)
{
    if (m_renderer || m_cannotDraw) {
        mpv_hook_continue(m_mpv, hook);
        return;
    }
    m_hook = hook;
    if (mpv_get_property_async(m_mpv, replyId(TracksReply, 0), "track-list", MPV_FORMAT_NODE) < 0)
        tracksKnown(false);
}

void MpvDevice::tracksKnown(bool pictures)
{
    if (pictures && !m_renderer && !m_cannotDraw) {
        m_renderer = std::make_unique<MpvRenderer>(m_mpv);
        if (!m_renderer->valid()) {
            qWarning("MpvDevice: mpv cannot draw pictures here; videos play their sound only");
            m_renderer.reset();
            m_cannotDraw = true;
            // No output exists yet, so this replaces none.
            mpv_set_property_string(m_mpv, "vo", "null");
        }
    }
    mpv_hook_continue(m_mpv, m_hook);
}

void MpvDevice::drainEvents()
{
    m_drainPosted = false;
    QPointer<MpvDevice> alive(this);
    while (m_mpv) {
        mpv_event *event = mpv_wait_event(m_mpv, 0);
        if (event->event_id == MPV_EVENT_NONE)
            break;
        handleEvent(*event);
        if (!alive)
            return;
    }
}

void MpvDevice::handleEvent(const mpv_event &event)
{
    const uint32_t generation = uint32_t(event.reply_userdata & 0xffffffffu);
    const auto kind = ReplyKind(event.reply_userdata >> 32);
    // mpv sends "duration" only when it differs from the value it sent last,
    // so a file as long as the one before would never learn its length: ask.
    // The tags are asked once the file is in, so they are known when it opens.
    auto askDuration = [this] {
        if (m_state != State::Loading || m_entry < 0 || m_loadedEntry != m_entry)
            return;
        if (!m_durationKnown)
            mpv_get_property_async(m_mpv, replyId(DurationReply, m_generation), "duration",
                                   MPV_FORMAT_DOUBLE);
        if (!m_tagsKnown)
            mpv_get_property_async(m_mpv, replyId(TagsReply, m_generation), "metadata",
                                   MPV_FORMAT_NODE);
    };
    switch (event.event_id) {
    case MPV_EVENT_HOOK:
        preloaded(static_cast<mpv_event_hook *>(event.data)->id);
        return;
    case MPV_EVENT_COMMAND_REPLY:
        if (generation != m_generation)
            return;
        if (kind == SeekReply) {
            if (--m_seeksUnanswered == 0 && m_seek == Seek::Sent)
                m_seek = event.error < 0 ? Seek::None : Seek::Queued;
        } else if (kind == LoadReply && m_state == State::Loading) {
            if (event.error < 0) {
                fail(CannotOpen, QString::fromUtf8(mpv_error_string(event.error)));
                return;
            }
            m_entry =
                intIn(static_cast<mpv_event_command *>(event.data)->result, "playlist_entry_id");
            // mpv may have given up on the file before this reply came.
            if (m_entry >= 0 && m_ended.entry == m_entry) {
                endOfEntry();
            } else {
                askDuration();
                finishLoading();
            }
        }
        return;
    case MPV_EVENT_GET_PROPERTY_REPLY: {
        if (kind == TracksReply) {
            const auto *property = static_cast<mpv_event_property *>(event.data);
            tracksKnown(event.error >= 0 && property && property->format == MPV_FORMAT_NODE &&
                        property->data &&
                        hasMovingPictures(*static_cast<mpv_node *>(property->data)));
            return;
        }
        if (kind == PositionReply)
            m_positionAsked = false;
        if (generation != m_generation)
            return;
        if (kind == PositionReply) {
            const auto *property = static_cast<mpv_event_property *>(event.data);
            if (event.error >= 0 && property && property->format == MPV_FORMAT_DOUBLE &&
                property->data)
                takePosition(*static_cast<double *>(property->data));
            return;
        }
        if (kind == VideoReply) {
            const auto *property = static_cast<mpv_event_property *>(event.data);
            const bool known = event.error >= 0 && property &&
                               property->format == MPV_FORMAT_NODE && property->data;
            // An answer without parameters keeps the size already known.
            if (known) {
                const auto &params = *static_cast<mpv_node *>(property->data);
                const QSize size(int(intIn(params, "dw")), int(intIn(params, "dh")));
                if (!size.isEmpty())
                    m_videoSize = size;
            }
            showVideo();
            return;
        }
        if (kind == EofReply) {
            const auto *property = static_cast<mpv_event_property *>(event.data);
            if (event.error >= 0 && property && property->format == MPV_FORMAT_FLAG &&
                property->data && *static_cast<int *>(property->data))
                reachedEnd();
            return;
        }
        if (kind == TagsReply) {
            if (m_state != State::Loading || m_tagsKnown)
                return;
            const auto *property = static_cast<mpv_event_property *>(event.data);
            const Metadata tags =
                metadataIn(event.error >= 0 && property && property->format == MPV_FORMAT_NODE
                               ? static_cast<mpv_node *>(property->data)
                               : nullptr);
            m_fileTags = {tags.title, tags.artist, tags.album};
            m_tagsKnown = true;
            finishLoading();
            return;
        }
        if (kind != DurationReply || m_state != State::Loading)
            return;
        // A stream may never know its length; it opens with none.
        const auto *property = static_cast<mpv_event_property *>(event.data);
        if (event.error >= 0 && property && property->format == MPV_FORMAT_DOUBLE &&
            property->data && m_headerLength <= 0)
            m_length = toMs(*static_cast<double *>(property->data));
        m_durationKnown = true;
        finishLoading();
        return;
    }
    case MPV_EVENT_START_FILE:
        m_startedEntry = static_cast<mpv_event_start_file *>(event.data)->playlist_entry_id;
        m_durationKnown = false;
        return;
    case MPV_EVENT_FILE_LOADED:
        m_loadedEntry = m_startedEntry;
        askDuration();
        finishLoading();
        if (m_isStream && m_entry >= 0 && m_loadedEntry == m_entry) {
            m_streamProps.loaded = true;
            updateStream();
        }
        return;
    case MPV_EVENT_SEEK:
        if (m_seek == Seek::Queued)
            m_seek = Seek::Running;
        return;
    case MPV_EVENT_PLAYBACK_RESTART:
        if (m_seek == Seek::Running)
            m_seek = Seek::None;
        askDuration();
        finishLoading();
        return;
    case MPV_EVENT_END_FILE: {
        const auto *end = static_cast<mpv_event_end_file *>(event.data);
        m_ended = {end->playlist_entry_id, int(end->reason), end->error};
        if (m_entry >= 0 && m_ended.entry == m_entry)
            endOfEntry();
        return;
    }
    case MPV_EVENT_VIDEO_RECONFIG:
        askVideoSize();
        return;
    case MPV_EVENT_PROPERTY_CHANGE:
        if (kind == StreamObserver)
            streamPropertyChanged(*static_cast<mpv_event_property *>(event.data));
        else
            propertyChanged(*static_cast<mpv_event_property *>(event.data));
        return;
    default:
        return;
    }
}

void MpvDevice::endOfEntry()
{
    if (m_state == State::Loading) {
        const int error =
            m_ended.reason == MPV_END_FILE_REASON_ERROR ? m_ended.error : MPV_ERROR_UNKNOWN_FORMAT;
        fail(mciError(error), QString::fromUtf8(mpv_error_string(error)));
    } else if (m_state == State::Open && m_ended.reason != MPV_END_FILE_REASON_STOP) {
        // The file went away under an open device (a read error): it ends there.
        hideVideo();
        m_state = State::Closed;
        m_entry = -1;
        observeStream(false);
        if (m_events.ended)
            m_events.ended();
    }
}

void MpvDevice::propertyChanged(const mpv_event_property &property)
{
    const bool known = property.format != MPV_FORMAT_NONE && property.data;
    if (std::strcmp(property.name, "duration") == 0) {
        m_durationKnown = known;
        if (known) {
            m_length =
                m_headerLength > 0 ? m_headerLength : toMs(*static_cast<double *>(property.data));
            finishLoading();
        }
        return;
    }
    if (m_state != State::Open || !known)
        return;
    if (std::strcmp(property.name, "eof-reached") == 0 && *static_cast<int *>(property.data))
        reachedEnd();
}

void MpvDevice::reachedEnd()
{
    if (m_state != State::Open || m_mode != Mode::Playing)
        return;
    m_mode = Mode::Stopped;
    holdPosition(m_isStream ? position() : m_length);
    if (m_isStream) {
        m_streamProps.ended = true;
        updateStream();
    }
    hideVideo();
    if (m_events.ended)
        m_events.ended();
}

// mpv is asked for the time only when someone reads it: told every change,
// it would wake the UI thread some 40 times a second, which costs more than
// playing the sound. Between answers the time runs on from the last one.
qint64 MpvDevice::position() const
{
    if (m_state != State::Open)
        return 0;
    if (m_mode != Mode::Playing || m_seek != Seek::None)
        return m_position;
    if (!m_positionAsked) {
        // Only a question mpv took gets an answer that clears the flag.
        m_positionAsked = mpv_get_property_async(m_mpv, replyId(PositionReply, m_generation),
                                                 "time-pos", MPV_FORMAT_DOUBLE) >= 0;
    }
    if (!m_sampledAt.isValid())
        return m_position;
    // Readers that ask seldom still see the time run; a player that stalled
    // since its last answer is believed for at most a second.
    const qint64 runOn = qMin<qint64>(m_sampledAt.elapsed(), 1000);
    // A stream has no length: its time runs on without end.
    return m_isStream ? m_position + runOn : qMin(m_position + runOn, m_length);
}

void MpvDevice::holdPosition(qint64 ms)
{
    m_position = ms;
    m_sampledAt.invalidate();
    m_seekFloor = -1;
}

void MpvDevice::takePosition(double seconds)
{
    // A stopped device holds the position it was stopped at, though mpv
    // still settles a few milliseconds further.
    if (m_state != State::Open || m_seek != Seek::None || m_mode != Mode::Playing)
        return;
    qint64 ms = m_isStream ? toMs(seconds) : qMin(toMs(seconds), m_length);
    if (ms < m_seekFloor)
        ms = m_seekFloor;
    else
        m_seekFloor = -1;
    // Only a clock seen moving runs on: not before the sound starts.
    if (ms > m_position)
        m_sampledAt.start();
    else
        m_sampledAt.invalidate();
    if (ms == m_position)
        return;
    m_position = ms;
    if (m_events.positionChanged)
        m_events.positionChanged(ms);
}

void MpvDevice::finishLoading()
{
    // Open only once the reply named our entry, mpv loaded that entry, and
    // its length is known: the engine reads the length right after opening.
    if (m_state != State::Loading || m_entry < 0 || m_loadedEntry != m_entry || !m_durationKnown ||
        !m_tagsKnown)
        return;
    m_state = State::Open;
    m_mode = m_wantPlay ? Mode::Playing : Mode::Stopped;
    holdPosition(0);
    if (m_headerLength > 0) // mpv may never know it
        m_length = m_headerLength;
    if (m_from >= 0 && m_wantPlay) {
        seekNow(m_from);
        m_from = -1;
    } else if (m_pendingSeek >= 0) {
        seekNow(m_pendingSeek);
    }
    m_pendingSeek = -1;
    m_wantPlay = false;
    // Sound starts before the file counts as open, and the end of a short
    // one may have come meanwhile, while it was not yet watched for.
    if (m_mode == Mode::Playing && m_seek == Seek::None)
        mpv_get_property_async(m_mpv, replyId(EofReply, m_generation), "eof-reached",
                               MPV_FORMAT_FLAG);
    QPointer<MpvDevice> alive(this);
    if (m_events.opened)
        m_events.opened();
    if (alive)
        showVideo();
}

void MpvDevice::fail(int error, const QString &text)
{
    hideVideo();
    m_state = State::Closed;
    m_mode = Mode::NotReady;
    m_entry = -1;
    m_error = error;
    m_errorText = text;
    observeStream(false);
    ++m_generation;
    if (m_events.failed)
        m_events.failed(error, text);
}

QWidget *MpvDevice::createVideoView(QWidget *parent)
{
    return m_renderer ? m_renderer->createView(parent) : nullptr;
}

// Video parameters carry the display size (aspect applied); they exist from
// the first decoded picture, also while pictures go nowhere.
void MpvDevice::askVideoSize()
{
    if (m_state != State::Closed)
        mpv_get_property_async(m_mpv, replyId(VideoReply, m_generation), "video-params",
                               MPV_FORMAT_NODE);
}

void MpvDevice::showVideo()
{
    if (m_state != State::Open || m_pictures != Pictures::None || m_videoSize.isEmpty())
        return;
    m_pictures = Pictures::Shown;
    if (m_videoEvents.started)
        m_videoEvents.started(m_videoSize);
}

void MpvDevice::hideVideo()
{
    const bool shown = m_pictures == Pictures::Shown;
    m_pictures = Pictures::Over;
    if (!shown)
        return;
    if (m_videoEvents.stopped)
        m_videoEvents.stopped();
}

// Only streams are watched: a local file's bit rate would wake the UI thread
// every second for nothing.
void MpvDevice::observeStream(bool on)
{
    if (!m_mpv)
        return;
    const uint64_t id = replyId(StreamObserver, 0);
    mpv_unobserve_property(m_mpv, id);
    m_streamProps = {};
    if (on) {
        mpv_observe_property(m_mpv, id, "metadata", MPV_FORMAT_NODE);
        mpv_observe_property(m_mpv, id, "audio-bitrate", MPV_FORMAT_DOUBLE);
        mpv_observe_property(m_mpv, id, "paused-for-cache", MPV_FORMAT_FLAG);
        mpv_observe_property(m_mpv, id, "core-idle", MPV_FORMAT_FLAG);
        mpv_observe_property(m_mpv, id, "cache-buffering-state", MPV_FORMAT_INT64);
    }
    // Told by whoever opened or closed the device, not by a callback from
    // inside that call.
    m_stream = {};
}

void MpvDevice::streamPropertyChanged(const mpv_event_property &property)
{
    if (!m_isStream || m_state == State::Closed)
        return;
    auto &p = m_streamProps;
    const bool known = property.format != MPV_FORMAT_NONE && property.data;
    const char *name = property.name;
    if (std::strcmp(name, "paused-for-cache") == 0) {
        p.pausedForCache = known && *static_cast<int *>(property.data);
    } else if (std::strcmp(name, "core-idle") == 0) {
        p.coreIdle = !known || *static_cast<int *>(property.data);
    } else if (std::strcmp(name, "cache-buffering-state") == 0) {
        p.cacheState =
            known ? int(std::clamp<int64_t>(*static_cast<int64_t *>(property.data), 0, 100)) : 0;
    } else if (std::strcmp(name, "audio-bitrate") == 0) {
        const double bits = known ? *static_cast<double *>(property.data) : 0;
        p.bitRate = std::isfinite(bits) && bits > 0 && bits < 1e9 ? int(bits) : 0;
    } else if (std::strcmp(name, "metadata") == 0) {
        const Metadata tags = metadataIn(known && property.format == MPV_FORMAT_NODE
                                             ? static_cast<mpv_node *>(property.data)
                                             : nullptr);
        p.title = tags.icyTitle.isEmpty() ? tags.title : tags.icyTitle;
        p.name = tags.icyName.isEmpty() ? tags.artist : tags.icyName;
    } else {
        return;
    }
    updateStream();
}

void MpvDevice::updateStream()
{
    StreamInfo info;
    if (m_isStream && m_state != State::Closed) {
        const auto &p = m_streamProps;
        info.title = p.title;
        info.name = p.name;
        info.bitRate = p.bitRate;
        // Idle while it should play: the first sound has not come, or the
        // cache ran dry. Not once the stream has ended.
        const bool wantsSound = m_state == State::Loading ? m_wantPlay : m_mode == Mode::Playing;
        info.buffering = p.loaded && wantsSound && !p.ended && (p.pausedForCache || p.coreIdle);
        info.bufferPercent = info.buffering ? p.cacheState : 0;
    }
    if (info == m_stream)
        return;
    m_stream = info;
    if (m_streamEvents.changed)
        m_streamEvents.changed();
}

extern "C" Q_DECL_EXPORT MediaDevice *velto_create_media_device(const char *const *options)
{
    QByteArrayList list;
    for (; options && *options; ++options)
        list.append(QByteArray(*options));
    return new MpvDevice(list);
}
