#pragma once

#include <QtGlobal>

#include <array>
#include <cstring>

// What the media engine is handed as a file when we make the samples
// ourselves (a CD track, a synthesised MIDI song): 16-bit stereo PCM.
constexpr int kWavHeaderBytes = 44;
constexpr int kWavFrameBytes = 4;

// The header of a WAV file holding dataBytes of samples at sampleRate.
inline std::array<char, kWavHeaderBytes> wavHeader(quint32 dataBytes, quint32 sampleRate)
{
    std::array<char, kWavHeaderBytes> h{};
    const auto put = [&h](int at, quint32 v, int bytes) {
        for (int i = 0; i < bytes; ++i)
            h[size_t(at + i)] = char(v >> (8 * i)); // little-endian
    };
    std::memcpy(h.data(), "RIFF", 4);
    put(4, 36 + dataBytes, 4);
    std::memcpy(h.data() + 8, "WAVEfmt ", 8);
    put(16, 16, 4);
    put(20, 1, 2); // PCM
    put(22, 2, 2); // channels
    put(24, sampleRate, 4);
    put(28, sampleRate * kWavFrameBytes, 4);
    put(32, kWavFrameBytes, 2);
    put(34, 16, 2); // bits a sample
    std::memcpy(h.data() + 36, "data", 4);
    put(40, dataBytes, 4);
    return h;
}
