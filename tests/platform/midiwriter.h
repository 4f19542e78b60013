#pragma once

#include <QByteArray>

#include <initializer_list>
#include <vector>

// Writes Standard MIDI Files for the tests, so no sample music is needed.
class MidiWriter
{
public:
    // A track is built from (delta ticks, event bytes) pairs.
    class Track
    {
    public:
        Track &event(quint32 delta, std::initializer_list<int> bytes)
        {
            char out[5];
            int n = 0;
            out[n++] = char(delta & 0x7f);
            while (delta >>= 7)
                out[n++] = char(0x80 | (delta & 0x7f));
            while (n > 0)
                m_bytes.append(out[--n]);
            for (int b : bytes)
                m_bytes.append(char(b));
            return *this;
        }
        Track &tempo(quint32 delta, quint32 usPerQuarter)
        {
            return event(delta, {0xff, 0x51, 0x03, int(usPerQuarter >> 16 & 0xff),
                                 int(usPerQuarter >> 8 & 0xff), int(usPerQuarter & 0xff)});
        }
        Track &note(quint32 delta, int channel, int key, quint32 length, int velocity = 100)
        {
            event(delta, {0x90 | channel, key, velocity});
            return event(length, {0x80 | channel, key, 0});
        }
        Track &end(quint32 delta = 0) { return event(delta, {0xff, 0x2f, 0x00}); }
        const QByteArray &bytes() const { return m_bytes; }

    private:
        QByteArray m_bytes;
    };

    static QByteArray smf(int format, int division, const std::vector<Track> &tracks)
    {
        QByteArray out = "MThd" + number(6, 4) + number(quint32(format), 2) +
                         number(quint32(tracks.size()), 2) + number(quint32(division), 2);
        for (const Track &t : tracks)
            out += "MTrk" + number(quint32(t.bytes().size()), 4) + t.bytes();
        return out;
    }

    // The same song in a RIFF "RMID" wrapper, after a chunk a reader must skip.
    static QByteArray rmid(const QByteArray &smf)
    {
        const QByteArray body = "RMIDINFO" + number(3, 4, true) + QByteArray("abc\0", 4) + "data" +
                                number(quint32(smf.size()), 4, true) + smf;
        return "RIFF" + number(quint32(body.size()), 4, true) + body;
    }

    // A short piano tune of `ms` milliseconds at 120 beats a minute, 480 ticks a beat.
    static QByteArray tune(int ms)
    {
        const quint32 ticks = quint32(ms) * 480 / 500;
        Track t;
        t.event(0, {0xc0, 0}); // acoustic grand piano
        quint32 at = 0;
        for (int key = 60; at + 240 <= ticks; key = key == 72 ? 60 : key + 2, at += 240)
            t.note(0, 0, key, 240);
        t.end(ticks - at);
        return smf(0, 480, {t});
    }

private:
    // Big-endian, as MIDI writes numbers, unless the RIFF wrapper's little-endian.
    static QByteArray number(quint32 v, int bytes, bool littleEndian = false)
    {
        QByteArray out;
        for (int i = 0; i < bytes; ++i)
            out.append(char(v >> 8 * (littleEndian ? i : bytes - 1 - i)));
        return out;
    }
};
