#pragma once

#include <QByteArray>
#include <QtGlobal>

// The playing time of an FLI or FLC animation, from its 128-byte header:
// frame count times the frame delay. mpv's own duration for these files is
// unreliable, so the media device reports this one instead.
//
// Header-only so both the media engine module and the tests use it.
struct FliHeader
{
    bool valid = false; // a known signature and at least one frame
    bool flc = false;   // delay in milliseconds; FLI counts in 1/70 s
    int frames = 0;
    quint32 speed = 0; // frame delay as written (0 is read as 5, like the decoder does)
    qint64 lengthMs = 0;

    static constexpr int Size = 128;

    // Any bytes; fewer than the header's 20 meaningful ones give valid = false.
    static FliHeader read(const QByteArray &bytes)
    {
        FliHeader h;
        if (bytes.size() < 20)
            return h;
        const auto *b = reinterpret_cast<const uchar *>(bytes.constData());
        const auto u16 = [b](int at) { return quint32(b[at]) | quint32(b[at + 1]) << 8; };
        const quint32 magic = u16(4);
        // 0xAF44 is the FLC variant with a different pixel depth; the timing is FLC's.
        if (magic != 0xAF11 && magic != 0xAF12 && magic != 0xAF44)
            return h;
        h.flc = magic != 0xAF11;
        h.frames = int(u16(6));
        // FLI stores a 16-bit delay here; FLC a 32-bit one.
        h.speed = h.flc ? u16(16) | u16(18) << 16 : u16(16);
        // The decoder plays a zero delay as 5 units; the length follows what is shown.
        const quint64 delay = h.speed == 0 ? 5 : h.speed;
        const quint64 units = quint64(h.frames) * delay; // below 2^48: no overflow
        h.lengthMs = h.flc ? qint64(units) : qint64((units * 1000 + 35) / 70);
        h.valid = h.frames > 0;
        return h;
    }
};
