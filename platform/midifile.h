#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

// A Standard MIDI File (.mid, and .rmi: the same inside a RIFF "RMID"
// wrapper) read into one time-ordered list of what a synthesizer must hear,
// with the song's length from its ticks and tempo changes.
//
// Total: any bytes give an answer. A track that cannot be read further ends
// where it broke and keeps what came before; bytes that are no MIDI at all
// give valid = false. Header-only so both the media engine module and the
// tests use it.
struct MidiEvent
{
    qint64 tick = 0;
    double ms = 0;     // from the start of the song
    quint8 status = 0; // 0x80-0xEF a channel message; 0xF0 system exclusive
    quint8 data1 = 0;
    quint8 data2 = 0;
    // System exclusive: the bytes after F0, without a final F7, in MidiSong::smf.
    qint32 dataOffset = 0;
    qint32 dataLength = 0;
};

struct MidiSong
{
    bool valid = false;
    int format = 0;
    int tracks = 0;   // tracks actually found
    int division = 0; // as written: ticks per quarter note, or SMPTE when negative
    qint64 lengthTicks = 0;
    double lengthMs = 0;
    std::vector<MidiEvent> events; // channel and system exclusive messages, in time order
    QByteArray smf;                // the file's MIDI part

    qint64 lengthMsRounded() const { return qint64(std::llround(lengthMs)); }

    // The head of a file is enough to tell: "MThd", or RIFF with form "RMID".
    static bool looksLikeMidi(const QByteArray &head)
    {
        return head.startsWith("MThd") || (head.startsWith("RIFF") && head.mid(8, 4) == "RMID");
    }

    static MidiSong read(const QByteArray &bytes)
    {
        MidiSong song;
        song.smf = smfPart(bytes);
        song.parse();
        return song;
    }

private:
    // Ticks beyond this (years of music) are held there, so no sum overflows.
    static constexpr qint64 MaxTick = qint64(1) << 40;

    struct Tempo
    {
        qint64 tick;
        quint32 usPerQuarter;
    };

    static quint32 be32(const uchar *p)
    {
        return quint32(p[0]) << 24 | quint32(p[1]) << 16 | quint32(p[2]) << 8 | p[3];
    }
    static quint32 le32(const uchar *p)
    {
        return quint32(p[3]) << 24 | quint32(p[2]) << 16 | quint32(p[1]) << 8 | p[0];
    }

    // The SMF inside an RMID file is its "data" chunk; anything else is taken as it is.
    static QByteArray smfPart(const QByteArray &bytes)
    {
        if (!bytes.startsWith("RIFF") || bytes.mid(8, 4) != "RMID")
            return bytes;
        const auto *b = reinterpret_cast<const uchar *>(bytes.constData());
        qint64 at = 12;
        while (at + 8 <= bytes.size()) {
            const qint64 size = le32(b + at + 4);
            if (std::memcmp(b + at, "data", 4) == 0)
                return bytes.mid(at + 8, qMin<qint64>(size, bytes.size() - at - 8));
            at += 8 + size + (size & 1); // chunks are padded to an even size
        }
        return {};
    }

    struct Reader
    {
        const uchar *p;
        qint64 at;
        qint64 end;

        bool has(qint64 n) const { return n >= 0 && end - at >= n; }
        // A variable-length number: at most four bytes.
        bool vlq(quint32 &value)
        {
            value = 0;
            for (int i = 0; i < 4; ++i) {
                if (!has(1))
                    return false;
                const uchar c = p[at++];
                value = value << 7 | (c & 0x7f);
                if (!(c & 0x80))
                    return true;
            }
            return false;
        }
    };

    void parse()
    {
        const auto *b = reinterpret_cast<const uchar *>(smf.constData());
        const qint64 size = smf.size();
        if (size < 14 || std::memcmp(b, "MThd", 4) != 0)
            return;
        const qint64 headerLength = be32(b + 4);
        if (headerLength < 6)
            return;
        format = b[8] << 8 | b[9];
        const int declaredTracks = b[10] << 8 | b[11];
        division = qint16(b[12] << 8 | b[13]);
        if (division == 0)
            return;
        if (division < 0 && (b[13] == 0 || -qint8(b[12]) <= 0))
            return;
        valid = true;

        std::vector<Tempo> tempos;
        qint64 at = 8 + qMin<qint64>(headerLength, size - 8);
        while (tracks < declaredTracks && at + 8 <= size) {
            const qint64 length = be32(b + at + 4);
            const qint64 start = at + 8;
            const qint64 stop = start + qMin<qint64>(length, size - start);
            if (std::memcmp(b + at, "MTrk", 4) == 0) {
                readTrack(Reader{b, start, stop}, tempos);
                ++tracks;
            }
            at = stop;
        }
        // Events of all tracks sound together in tick order; at the same tick
        // the earlier track goes first, and a track keeps its own order.
        std::stable_sort(events.begin(), events.end(),
                         [](const MidiEvent &a, const MidiEvent &c) { return a.tick < c.tick; });
        std::stable_sort(tempos.begin(), tempos.end(),
                         [](const Tempo &a, const Tempo &c) { return a.tick < c.tick; });
        const std::vector<TempoPoint> map = tempoMap(tempos);
        for (MidiEvent &e : events)
            e.ms = msAt(e.tick, map);
        lengthMs = msAt(lengthTicks, map);
    }

    struct TempoPoint
    {
        qint64 tick;
        double ms;
        double msPerTick;
    };

    // Where each tempo starts, in ticks and in milliseconds. SMPTE timing
    // counts a fixed number of ticks per second and knows no tempo.
    std::vector<TempoPoint> tempoMap(const std::vector<Tempo> &tempos) const
    {
        if (division < 0) {
            const int fps = -qint8(quint16(division) >> 8);
            const double framesPerSecond = fps == 29 ? 29.97 : fps;
            return {{0, 0.0, 1000.0 / (framesPerSecond * (division & 0xff))}};
        }
        // 120 beats a minute until told otherwise.
        std::vector<TempoPoint> map{{0, 0.0, 500.0 / division}};
        for (const Tempo &t : tempos) {
            const TempoPoint &last = map.back();
            map.push_back({t.tick, last.ms + double(t.tick - last.tick) * last.msPerTick,
                           t.usPerQuarter / (1000.0 * division)});
        }
        return map;
    }

    static double msAt(qint64 tick, const std::vector<TempoPoint> &map)
    {
        auto after = std::upper_bound(map.begin(), map.end(), tick,
                                      [](qint64 t, const TempoPoint &p) { return t < p.tick; });
        const TempoPoint &p = *(after - 1); // map[0] is at tick 0, so there is one
        return p.ms + double(tick - p.tick) * p.msPerTick;
    }

    void readTrack(Reader r, std::vector<Tempo> &tempos)
    {
        qint64 tick = 0;
        quint8 running = 0;
        while (r.has(1)) {
            quint32 delta = 0;
            if (!r.vlq(delta))
                break;
            tick = qMin(tick + delta, MaxTick);
            lengthTicks = qMax(lengthTicks, tick);
            if (!r.has(1))
                break;
            quint8 status = r.p[r.at];
            if (status & 0x80)
                ++r.at;
            else if (running)
                status = running; // running status: the byte read is already data
            else
                break;

            if (status == 0xff) {
                quint32 length = 0;
                if (!r.has(1))
                    break;
                const quint8 type = r.p[r.at++];
                if (!r.vlq(length) || !r.has(length))
                    break;
                if (type == 0x2f)
                    break; // end of track
                if (type == 0x51 && length >= 3) {
                    const uchar *t = r.p + r.at;
                    const quint32 us = quint32(t[0]) << 16 | quint32(t[1]) << 8 | t[2];
                    if (us > 0)
                        tempos.push_back({tick, us});
                }
                r.at += length;
                continue;
            }
            if (status == 0xf0 || status == 0xf7) {
                quint32 length = 0;
                if (!r.vlq(length) || !r.has(length))
                    break;
                // F7 packets continue a message or carry raw bytes; a
                // synthesizer takes whole F0 messages only.
                if (status == 0xf0) {
                    quint32 payload = length;
                    if (payload > 0 && r.p[r.at + payload - 1] == 0xf7)
                        --payload;
                    MidiEvent e;
                    e.tick = tick;
                    e.status = status;
                    e.dataOffset = qint32(r.at);
                    e.dataLength = qint32(payload);
                    events.push_back(e);
                }
                r.at += length;
                continue;
            }
            if (status >= 0xf0)
                break; // no other system message belongs in a file
            running = status;
            const int kind = status >> 4;
            const int needed = kind == 0xc || kind == 0xd ? 1 : 2;
            if (!r.has(needed))
                break;
            MidiEvent e;
            e.tick = tick;
            e.status = status;
            e.data1 = r.p[r.at] & 0x7f;
            e.data2 = needed == 2 ? r.p[r.at + 1] & 0x7f : 0;
            r.at += needed;
            events.push_back(e);
        }
    }
};
