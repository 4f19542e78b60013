#include "platform/nullmediadevice.h"
#include "platform/wavevolume.h"
#include "player/volumecontrol.h"
#include "support/printers.h"
#include "support/recordingsurface.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

struct Fixture
{
    WaveVolume wave;
    RecordingSurface skin;
    VolumeControl volume{wave, skin};
    QString caption() const { return skin.labels.value(VolumeControl::kBalanceLabel); }
    float knob() const { return float(skin.sliders.value(VolumeControl::kVolumeSlider)); }
};

TEST(VolumeControl, BalanceAndVolumeLevelSetTheCaptionAndBothChannels)
{
    // The output's word: the right channel in the high half, the left in the low.
    const std::tuple<float, const char *, quint32> cases[] = {
        // The dead zone: both ends of it are still the centre.
        {0.45f, "Centre", 0xffffffffu},
        {0.55f, "Centre", 0xffffffffu},
        // 65535 x 0.88 = 57670.8: 57671, which is 0xE147 as a signed word.
        {0.44f, "12% left", 0xe147ffffu},
        // 32767.5 rounds to the even 32768, which the word holds as -32768.
        {0.75f, "50% right", 0xffff8000u},
        // Out of range, the balance is held at its ends; no number is the centre.
        {2.0f, "100% right", 0xffff0000u},
    };
    for (const auto &[balance, caption, word] : cases) {
        SCOPED_TRACE(balance);
        Fixture f;
        f.volume.setVolumeLevel(1);
        f.volume.SetBalance(balance);
        EXPECT_EQ(f.caption(), QString::fromLatin1(caption));
        EXPECT_EQ(f.wave.waveOutGetVolume(), word);
    }

    // At the centre, the volume level writes both channels.
    Fixture f;
    f.volume.setVolumeLevel(0.1f);
    EXPECT_EQ(f.wave.waveOutGetVolume(), 0x199a199au);
}

TEST(VolumeControl, ReadsTheLouderChannelBackWithTheOneStepLossAndStartsThere)
{
    const std::pair<quint32, int> cases[] = {
        {0xffffffffu, 65534}, // full reads one step low
        {0x7fff0000u, 32767},
        {0x0001ffffu, 65534},
    };
    for (const auto &[word, level] : cases) {
        SCOPED_TRACE(word);
        Fixture f;
        f.wave.waveOutSetVolume(word);
        EXPECT_EQ(f.volume.ReadVolume(), float(level / 65535.0));
        EXPECT_EQ(f.wave.waveOutGetVolume(), word) << "reading changes nothing";
    }
    // A new control starts at the level the output reports, without writing it.
    Fixture f;
    EXPECT_EQ(f.volume.volumeLevel(), float(65534 / 65535.0));
    EXPECT_EQ(f.volume.balance(), 0.5f);
    EXPECT_EQ(f.wave.waveOutGetVolume(), WaveVolume::Full);
}

TEST(VolumeControl, GainsReachEveryRegisteredDevice)
{
    Fixture f;
    NullMediaDevice first, second, late;
    f.wave.addDevice(&first);
    f.wave.addDevice(&second);
    f.volume.setVolumeLevel(1);
    f.volume.SetBalance(0.44f);
    for (const MediaDevice *d : {&first, &second}) {
        EXPECT_EQ(d->leftGain(), 1.0);
        EXPECT_EQ(d->rightGain(), 57671 / 65535.0);
    }
    // A device added later starts with the gains in force.
    f.wave.addDevice(&late);
    EXPECT_EQ(late.rightGain(), 57671 / 65535.0);

    // A removed device hears no more changes.
    f.wave.removeDevice(&second);
    f.volume.SetBalance(0.5f);
    EXPECT_EQ(first.rightGain(), 1.0);
    EXPECT_EQ(second.rightGain(), 57671 / 65535.0);
}

TEST(VolumeControl, StepsAndTheWheelMoveOnTwentieths)
{
    // Wheel angle deltas: 120 is one notch.
    const std::tuple<const char *, float, std::vector<int>, float> cases[] = {
        {"a notch up from a full output stays full", 65534 / 65535.0f, {120}, 1.0f},
        {"fine wheels add up", 0.5f, {15, 15, 15, 15, 15, 15, 15, 15, 15}, 0.55f},
        {"from between two steps", 0.512f, {-120}, 0.45f},
        {"never below silence", 0.05f, {-360}, 0.0f},
    };
    for (const auto &[name, start, wheel, expected] : cases) {
        SCOPED_TRACE(name);
        Fixture f;
        f.volume.setVolumeLevel(start);
        for (int delta : wheel)
            f.volume.wheel(delta);
        EXPECT_FLOAT_EQ(f.volume.volumeLevel(), expected);
        EXPECT_FLOAT_EQ(f.knob(), expected) << "the knob follows";
    }
}

TEST(VolumeControl, AnyVolumeChangeEndsAMute)
{
    Fixture f;
    const std::function<void(VolumeControl &)> changes[] = {
        [](VolumeControl &v) { v.VolumeStep(-1); },
        [](VolumeControl &v) { v.setVolumeLevel(0.3f); },
    };
    for (const auto &change : changes) {
        f.volume.setMuted(true);
        EXPECT_EQ(f.wave.leftGain(), 0.0);
        change(f.volume);
        EXPECT_FALSE(f.volume.muted());
        EXPECT_GT(f.wave.leftGain(), 0.0);
    }
    // Command 9's toggle is the main window's test; the balance leaves the mute alone.
    f.volume.setMuted(true);
    f.volume.SetBalance(0.2f);
    EXPECT_TRUE(f.volume.muted());
}

} // namespace
