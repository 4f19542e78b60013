#pragma once

#include "playercommands.h"

#include <functional>

// The playback engine: plays, pauses, seeks and follows the playlist.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class PlaybackEngine : public PlayerCommands
{
public:
    void StopIt() override {}
    void PauseIt() override {}
    void PlayIt() override {}
    void EjectIt() override {}
    void PrevTrack() override {}
    void NextTrack() override {}
    void Reverse() override {}
    void Forward() override {}
    void PlayPause() override {}
    void ToggleCDMode() override {}
    void JumpTo() override {}
    // The lights live on the skin, which the engine cannot see; the window draws them.
    void ShowLights() override
    {
        if (showLights)
            showLights();
    }
    qint32 currentPosition() const override { return 0; }
    void ToggleRemaining() override {}
    void VolumeStep(int) override {}
    void ToggleMute() override {}
    void PlSelAct(int) override {}
    void LoopPoint() override {}

    std::function<void()> showLights;
};
