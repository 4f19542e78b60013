#pragma once

#include "platform/mediadevice.h"

#include <QtGlobal>

#include <algorithm>
#include <vector>

// Velto's own output level, in the shape of a sound card's wave-out volume:
// one 32-bit word, the left channel's level (0-65535) in the low 16 bits and
// the right channel's in the high 16 bits. The word is kept exactly as
// written and read back unchanged; its levels reach every registered media
// device as linear gains. The desktop's master volume is never touched.
class WaveVolume
{
public:
    static constexpr quint32 Full = 0xffffffffu;

    quint32 waveOutGetVolume() const { return m_word; }
    void waveOutSetVolume(quint32 word)
    {
        m_word = word;
        apply();
    }

    // Silence without forgetting the level, like a mixer's mute switch.
    void setMuted(bool muted)
    {
        m_muted = muted;
        apply();
    }
    bool muted() const { return m_muted; }

    double leftGain() const { return m_muted ? 0.0 : (m_word & 0xffff) / 65535.0; }
    double rightGain() const { return m_muted ? 0.0 : (m_word >> 16) / 65535.0; }

    // A device takes the current gains at once and every change after. It
    // must be removed before it is destroyed.
    void addDevice(MediaDevice *device)
    {
        if (!device || std::find(m_devices.begin(), m_devices.end(), device) != m_devices.end())
            return;
        m_devices.push_back(device);
        device->setGains(leftGain(), rightGain());
    }
    void removeDevice(MediaDevice *device)
    {
        m_devices.erase(std::remove(m_devices.begin(), m_devices.end(), device), m_devices.end());
    }

private:
    void apply()
    {
        for (MediaDevice *device : m_devices)
            device->setGains(leftGain(), rightGain());
    }

    // A fresh sound card reports both channels at full.
    quint32 m_word = Full;
    bool m_muted = false;
    std::vector<MediaDevice *> m_devices;
};
