#include "volumecontrol.h"

#include "platform/wavevolume.h"
#include "skin/skinsurface.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int Steps = 20;
constexpr int WheelNotch = 120;

float clamped(float value, float fallback)
{
    if (std::isnan(value))
        return fallback;
    return value < 0 ? 0.0f : value > 1 ? 1.0f : value;
}

// One channel's level as the 16-bit pattern the word holds: rounded half to
// even, and a value above 32767 taken down by 65536 so it fits a signed word.
quint32 channelBits(float level, double gain)
{
    qint64 value = qint64(std::nearbyint(double(level) * 65535.0 * gain));
    if (value > 32767)
        value -= 65536;
    return quint32(value) & 0xffffu;
}

// A channel of the word, read as a signed number; a negative one gets 65535 back.
int channelLevel(quint32 bits)
{
    const int value = qint16(quint16(bits));
    return value < 0 ? value + 65535 : value;
}

// The distance from the centre as a whole percentage, halves rounded away from zero.
QString percent(double offCentre)
{
    return QString::number(qint64(std::round(offCentre * 200)));
}

} // namespace

VolumeControl::VolumeControl(WaveVolume &wave, SkinSurface &skin)
    : m_wave(wave), m_skin(skin), m_level(ReadVolume())
{
}

void VolumeControl::showAll()
{
    m_skin.setSliderValue(kVolumeSlider, m_level);
    m_skin.setSliderValue(kBalanceSlider, m_balance);
    m_skin.setLabel(kBalanceLabel, balanceCaption());
}

void VolumeControl::SetBalance(float balance)
{
    m_balance = clamped(balance, 0.5f);
    m_skin.setLabel(kBalanceLabel, balanceCaption());
    ApplyVolume();
}

QString VolumeControl::balanceCaption() const
{
    // Compared in single precision, so 0.45 and 0.55 themselves are the centre.
    if (m_balance < 0.45f)
        return percent(0.5 - double(m_balance)) + QStringLiteral("% left");
    if (m_balance > 0.55f)
        return percent(double(m_balance) - 0.5) + QStringLiteral("% right");
    return QStringLiteral("Centre");
}

void VolumeControl::ApplyVolume()
{
    double leftGain = 1;
    double rightGain = 1;
    if (m_balance > 0.55f)
        leftGain = 1 - 2 * (double(m_balance) - 0.5);
    if (m_balance < 0.45f)
        rightGain = 1 - 2 * (0.5 - double(m_balance));
    m_wave.waveOutSetVolume(channelBits(m_level, rightGain) << 16 | channelBits(m_level, leftGain));
}

float VolumeControl::ReadVolume() const
{
    const quint32 word = m_wave.waveOutGetVolume();
    return float(std::max(channelLevel(word), channelLevel(word >> 16)) / 65535.0);
}

void VolumeControl::restore(quint32 word)
{
    m_wave.waveOutSetVolume(word);
    m_level = ReadVolume();
    m_skin.setSliderValue(kVolumeSlider, m_level);
}

void VolumeControl::setVolumeLevel(float level)
{
    m_level = clamped(level, m_level);
    m_wave.setMuted(false);
    ApplyVolume();
    m_skin.setSliderValue(kVolumeSlider, m_level);
}

void VolumeControl::VolumeStep(int direction)
{
    if (direction == 0)
        return;
    // Steps land on the twentieths, wherever the slider left the level.
    const int step =
        std::clamp(int(std::lround(m_level * Steps)) + (direction > 0 ? 1 : -1), 0, Steps);
    setVolumeLevel(float(step) / Steps);
}

void VolumeControl::wheel(int angleDelta)
{
    const qint64 total = qint64(m_wheel) + angleDelta;
    const qint64 notches = total / WheelNotch;
    m_wheel = int(total - notches * WheelNotch);
    // More notches than the range has change nothing more.
    for (qint64 i = std::min<qint64>(std::abs(notches), Steps); i > 0; --i)
        VolumeStep(notches > 0 ? 1 : -1);
}

void VolumeControl::ToggleMute()
{
    setMuted(!muted());
}

void VolumeControl::setMuted(bool muted)
{
    m_wave.setMuted(muted);
}

bool VolumeControl::muted() const
{
    return m_wave.muted();
}
