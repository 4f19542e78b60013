#pragma once

#include <QString>
#include <QtGlobal>

class SkinSurface;
class WaveVolume;

// The stereo balance and the volume level of the main window, applied to
// Velto's output level (WaveVolume) as one 32-bit word.
//
// Balance runs from 0 (all left) to 1 (all right); 0.45 to 0.55 is a dead
// zone that counts as the centre. The volume level runs from 0 to 1. Both are
// single precision, and the word is computed from them with fixed integer
// steps, so a level read back from the word is the level that was set.
class VolumeControl
{
public:
    // Slider 2 is the volume, slider 3 the balance with its caption on label 25.
    static constexpr int kVolumeSlider = 2;
    static constexpr int kBalanceSlider = 3;
    static constexpr int kBalanceLabel = 25;

    VolumeControl(WaveVolume &wave, SkinSurface &skin);

    // Both knobs and the caption, for a new skin.
    void showAll();

    // Stores the balance, shows its caption and applies the volume.
    void SetBalance(float balance);
    // Writes the word for the current level and balance.
    void ApplyVolume();
    // The larger channel of the word, as a fraction; a full channel reads
    // 65534/65535 (the word keeps one step of headroom).
    float ReadVolume() const;

    // The word a previous run ended with; the balance stays as it is.
    void restore(quint32 word);
    // From the volume slider or a fade; sound that was muted comes back.
    void setVolumeLevel(float level);
    // One step louder (+1) or softer (-1): a twentieth of the range.
    void VolumeStep(int direction);
    // The mouse wheel: one step per notch; finer wheels add up to notches.
    void wheel(int angleDelta);
    void ToggleMute();
    void setMuted(bool muted);

    // For label 25: "Centre", "12% left", "100% right".
    QString balanceCaption() const;
    float balance() const { return m_balance; }
    float volumeLevel() const { return m_level; }
    bool muted() const;

private:
    WaveVolume &m_wave;
    SkinSurface &m_skin;
    float m_balance = 0.5f;
    float m_level;
    int m_wheel = 0; // wheel movement short of a notch
};
