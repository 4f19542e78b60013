#include "midistream.h"

#include "platform/midifile.h"
#include "platform/readfile.h"
#include "platform/wavheader.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QtDebug>

#include <fluidsynth.h>
#include <mpv/client.h>
#include <mpv/stream_cb.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <mutex>
#include <vector>

namespace {

constexpr char Protocol[] = "velto-midi";
constexpr int SampleRate = 44100;
constexpr int FrameBytes = kWavFrameBytes;
constexpr int HeaderBytes = kWavHeaderBytes;
// The WAV sizes are 32-bit: longer songs play their first six hours.
constexpr qint64 MaxFrames = (0xffffffffLL - HeaderBytes) / FrameBytes;
// Bigger "MIDI" files are not music; they are read no further than this.
constexpr qint64 MaxFileBytes = 64 << 20;

void toWarning(int level, const char *message, void *)
{
    qWarning("FluidSynth (%d): %s", level, message);
}

// FluidSynth writes its warnings to the terminal; only real errors matter here.
void quietFluidSynth()
{
    static std::once_flag once;
    std::call_once(once, [] {
        fluid_set_log_function(FLUID_PANIC, toWarning, nullptr);
        fluid_set_log_function(FLUID_ERR, toWarning, nullptr);
        fluid_set_log_function(FLUID_WARN, nullptr, nullptr);
        fluid_set_log_function(FLUID_INFO, nullptr, nullptr);
        fluid_set_log_function(FLUID_DBG, nullptr, nullptr);
    });
}

// One open stream: a synthesizer that renders the song from any frame on.
// mpv calls it from one thread at a time.
class Renderer
{
public:
    static std::unique_ptr<Renderer> create(const QString &file, const QString &bank)
    {
        QFile in;
        if (openRegularFile(in, file, QIODevice::ReadOnly) != FileFault::None)
            return nullptr;
        std::unique_ptr<Renderer> r(new Renderer);
        r->m_song = MidiSong::read(in.read(MaxFileBytes));
        if (r->m_song.valid)
            r->m_frames = std::clamp<qint64>(
                qint64(std::llround(r->m_song.lengthMs * SampleRate / 1000.0)), 0, MaxFrames);
        r->m_header = wavHeader(quint32(r->m_frames * FrameBytes), SampleRate);
        if (r->m_frames == 0)
            return r;
        r->m_eventFrame.reserve(r->m_song.events.size());
        for (const MidiEvent &e : r->m_song.events)
            r->m_eventFrame.push_back(qint64(std::llround(e.ms * SampleRate / 1000.0)));

        quietFluidSynth();
        r->m_settings = new_fluid_settings();
        fluid_settings_setnum(r->m_settings, "synth.sample-rate", SampleRate);
        // The default gain leaves most songs far quieter than other music.
        fluid_settings_setnum(r->m_settings, "synth.gain", 0.6);
        r->m_synth = new_fluid_synth(r->m_settings);
        if (!r->m_synth || fluid_synth_sfload(r->m_synth, bank.toLocal8Bit().constData(), 1) < 0) {
            qWarning().noquote() << "MIDI: the sound bank" << bank << "could not be loaded";
            return nullptr;
        }
        return r;
    }

    ~Renderer()
    {
        if (m_synth)
            delete_fluid_synth(m_synth);
        if (m_settings)
            delete_fluid_settings(m_settings);
    }

    // A song with nothing to play is an empty stream, not an empty WAV: mpv
    // then reports an unrecognised format, as for any file it cannot read.
    qint64 size() const { return m_frames > 0 ? HeaderBytes + m_frames * FrameBytes : 0; }

    int64_t seek(int64_t offset)
    {
        if (offset < 0 || offset > size())
            return MPV_ERROR_GENERIC;
        m_pos = offset;
        return offset;
    }

    int64_t read(char *buffer, uint64_t wanted)
    {
        const qint64 want = qint64(std::min<uint64_t>(wanted, uint64_t(1) << 30));
        qint64 done = 0;
        while (done < want && m_pos < size()) {
            if (m_pos < HeaderBytes) {
                const qint64 n = std::min(want - done, HeaderBytes - m_pos);
                std::memcpy(buffer + done, m_header.data() + m_pos, size_t(n));
                done += n;
                m_pos += n;
                continue;
            }
            const qint64 frame = (m_pos - HeaderBytes) / FrameBytes;
            const int within = int((m_pos - HeaderBytes) % FrameBytes);
            if (within != 0 || want - done < FrameBytes) {
                // A read that splits a frame: the frame is rendered once and kept.
                const char *bytes = frameBytes(frame);
                const qint64 n = std::min<qint64>(want - done, FrameBytes - within);
                std::memcpy(buffer + done, bytes + within, size_t(n));
                done += n;
                m_pos += n;
                continue;
            }
            const qint64 frames =
                std::min({(want - done) / FrameBytes, m_frames - frame, qint64(ChunkFrames)});
            positionAt(frame);
            render(m_chunk.data(), frames);
            std::memcpy(buffer + done, m_chunk.data(), size_t(frames * FrameBytes));
            done += frames * FrameBytes;
            m_pos += frames * FrameBytes;
        }
        return done;
    }

private:
    static constexpr int ChunkFrames = 4096;

    Renderer() = default;

    const char *frameBytes(qint64 frame)
    {
        if (m_cachedFrame != frame) {
            positionAt(frame);
            render(reinterpret_cast<qint16 *>(m_cached.data()), 1);
            m_cachedFrame = frame;
        }
        return m_cached.data();
    }

    // After a jump the synthesizer starts silent with every program,
    // controller and bend the song set before that point; notes held across
    // the point are not sounded.
    void positionAt(qint64 frame)
    {
        if (frame == m_nextFrame)
            return;
        fluid_synth_system_reset(m_synth);
        m_nextEvent = 0;
        for (; m_nextEvent < m_eventFrame.size() && m_eventFrame[m_nextEvent] < frame;
             ++m_nextEvent) {
            const int kind = m_song.events[m_nextEvent].status >> 4;
            if (kind != 0x8 && kind != 0x9 && kind != 0xa)
                send(m_song.events[m_nextEvent]);
        }
        m_nextFrame = frame;
    }

    void render(qint16 *out, qint64 frames)
    {
        while (frames > 0) {
            while (m_nextEvent < m_eventFrame.size() && m_eventFrame[m_nextEvent] <= m_nextFrame)
                send(m_song.events[m_nextEvent++]);
            const qint64 until = m_nextEvent < m_eventFrame.size()
                                     ? m_eventFrame[m_nextEvent] - m_nextFrame
                                     : frames;
            const int n = int(std::min(frames, until));
            fluid_synth_write_s16(m_synth, n, out, 0, 2, out, 1, 2);
            out += 2 * n;
            frames -= n;
            m_nextFrame += n;
        }
    }

    void send(const MidiEvent &e)
    {
        const int channel = e.status & 0x0f;
        switch (e.status >> 4) {
        case 0x8:
            fluid_synth_noteoff(m_synth, channel, e.data1);
            break;
        case 0x9: // velocity 0 is a note-off, which FluidSynth knows
            fluid_synth_noteon(m_synth, channel, e.data1, e.data2);
            break;
        case 0xa:
            fluid_synth_key_pressure(m_synth, channel, e.data1, e.data2);
            break;
        case 0xb:
            fluid_synth_cc(m_synth, channel, e.data1, e.data2);
            break;
        case 0xc:
            fluid_synth_program_change(m_synth, channel, e.data1);
            break;
        case 0xd:
            fluid_synth_channel_pressure(m_synth, channel, e.data1);
            break;
        case 0xe:
            fluid_synth_pitch_bend(m_synth, channel, e.data1 | e.data2 << 7);
            break;
        default:
            if (e.dataLength > 0)
                fluid_synth_sysex(m_synth, m_song.smf.constData() + e.dataOffset, e.dataLength,
                                  nullptr, nullptr, nullptr, 0);
            break;
        }
    }

    MidiSong m_song;
    std::vector<qint64> m_eventFrame;
    fluid_settings_t *m_settings = nullptr;
    fluid_synth_t *m_synth = nullptr;
    qint64 m_frames = 0;
    std::array<char, HeaderBytes> m_header{};

    qint64 m_pos = 0;       // of the stream, in bytes
    qint64 m_nextFrame = 0; // the synthesizer's next frame
    size_t m_nextEvent = 0;
    qint64 m_cachedFrame = -1;
    std::array<char, FrameBytes> m_cached{};
    std::array<qint16, ChunkFrames * 2> m_chunk{};
};

int openStream(void *, char *uri, mpv_stream_cb_info *info)
{
    const QByteArray prefix = QByteArray(Protocol) + "://";
    const QByteArray name(uri);
    if (!name.startsWith(prefix))
        return MPV_ERROR_LOADING_FAILED;
    const QString bank = MidiStream::soundBank();
    if (bank.isEmpty())
        return MPV_ERROR_LOADING_FAILED;
    auto renderer = Renderer::create(QString::fromUtf8(name.mid(prefix.size())), bank);
    if (!renderer)
        return MPV_ERROR_LOADING_FAILED;
    info->cookie = renderer.release();
    info->read_fn = [](void *cookie, char *buffer, uint64_t n) {
        return static_cast<Renderer *>(cookie)->read(buffer, n);
    };
    info->seek_fn = [](void *cookie, int64_t offset) {
        return static_cast<Renderer *>(cookie)->seek(offset);
    };
    info->size_fn = [](void *cookie) -> int64_t { return static_cast<Renderer *>(cookie)->size(); };
    info->close_fn = [](void *cookie) { delete static_cast<Renderer *>(cookie); };
    return 0;
}

} // namespace

namespace MidiStream {

bool hasMidiName(const QString &path)
{
    static const QStringList extensions = {QStringLiteral("MID"), QStringLiteral("MIDI"),
                                           QStringLiteral("RMI"), QStringLiteral("KAR")};
    return extensions.contains(QFileInfo(path).suffix().toUpper());
}

bool isMidiFile(const QString &path)
{
    QFile file;
    return openRegularFile(file, path, QIODevice::ReadOnly) == FileFault::None &&
           MidiSong::looksLikeMidi(file.read(12));
}

QString soundBank()
{
    const QString chosen = qEnvironmentVariable("VELTO_SOUNDFONT");
    if (!chosen.isEmpty())
        return QFileInfo(chosen).isFile() ? chosen : QString();
    // The small bank first: the large one costs over a hundred megabytes per player.
    static const char *const banks[] = {
        "/usr/share/sounds/sf2/TimGM6mb.sf2",   "/usr/share/sounds/sf2/default-GM.sf2",
        "/usr/share/sounds/sf2/FluidR3_GM.sf2", "/usr/share/soundfonts/default.sf2",
        "/usr/share/soundfonts/FluidR3_GM.sf2",
    };
    for (const char *bank : banks) {
        if (QFileInfo(QString::fromLatin1(bank)).isFile())
            return QString::fromLatin1(bank);
    }
    return QString();
}

QString missingBankText()
{
    return QStringLiteral("no General MIDI sound bank is installed "
                          "(install timgm6mb-soundfont or fluid-soundfont-gm)");
}

QByteArray url(const QString &absolutePath)
{
    return QByteArray(Protocol) + "://" + absolutePath.toUtf8();
}

bool registerProtocol(mpv_handle *mpv)
{
    return mpv_stream_cb_add_ro(mpv, Protocol, nullptr, openStream) >= 0;
}

} // namespace MidiStream
