#pragma once

#include <QtGlobal>

#include <array>
#include <cstring>

// The 44 bytes in front of 16-bit stereo PCM that make it a WAV file mpv
// plays and seeks in: how a disc track and a rendered MIDI song reach it.
inline std::array<char, 44> wavHeader(quint32 sampleRate, quint32 dataBytes)
{
    std::array<char, 44> h{};
    const auto put = [&h](int at, quint32 v, int bytes) {
        for (int i = 0; i < bytes; ++i)
            h[size_t(at + i)] = char(v >> (8 * i));
    };
    std::memcpy(h.data(), "RIFF", 4);
    put(4, 36 + dataBytes, 4);
    std::memcpy(h.data() + 8, "WAVEfmt ", 8);
    put(16, 16, 4);
    put(20, 1, 2); // PCM
    put(22, 2, 2);
    put(24, sampleRate, 4);
    put(28, sampleRate * 4, 4);
    put(32, 4, 2);
    put(34, 16, 2);
    std::memcpy(h.data() + 36, "data", 4);
    put(40, dataBytes, 4);
    return h;
}
