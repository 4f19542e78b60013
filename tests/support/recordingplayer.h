#pragma once

#include "player/playercommands.h"
#include "player/playlist.h"

#include <QList>

// A player that only notes the current entry at each PlayIt: what the
// playlist's windows ask of playback, without playing anything.
class RecordingPlayer : public PlayerCommands
{
public:
    explicit RecordingPlayer(const PlaylistState &state) : m_state(state) {}
    QList<int> played;

    void PlayIt() override { played << m_state.CurTrack; }
    void StopIt() override {}
    void PauseIt() override {}
    void EjectIt() override {}
    void PrevTrack() override {}
    void NextTrack() override {}
    void Reverse() override {}
    void Forward() override {}
    void PlayPause() override {}
    void ToggleCDMode() override {}
    void JumpTo(qint32) override {}
    void ShowLights() override {}
    qint32 currentPosition() const override { return 0; }
    void ToggleRemaining() override {}
    void VolumeStep(int) override {}
    void ToggleMute() override {}
    void PlSelAct(int) override {}
    void LoopPoint() override {}

private:
    const PlaylistState &m_state;
};
