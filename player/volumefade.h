#pragma once

#include <QDateTime>
#include <functional>

class Clock;

// Brings the output level up from silence over a few seconds, so a scheduled
// switch-on wakes the user instead of startling them. Levels are in whatever
// unit setLevel takes; the fade only scales between 0 and the target.
//
// Time comes from the injected clock and the fade moves only when tick() is
// called, so a timer of the window drives it and tests script it.
class VolumeFade
{
public:
    static constexpr int DefaultMs = 8000;

    explicit VolumeFade(const Clock &clock) : m_clock(clock) {}

    // Filled in by the owner: where the fade sets the level, and where
    // fadeIn() reads the level in use.
    std::function<void(int level)> setLevel;
    std::function<int()> readLevel;

    // Fades up to the level in use. A fade already running keeps its target:
    // the level read halfway up is not the one the user chose. Without a
    // reader it does nothing, for want of a level to reach.
    void fadeIn(int durationMs = DefaultMs);

    // Sets the level to 0 at once and fades up to target over durationMs.
    // A target below 0 counts as 0; a duration of 0 or less sets the target at once.
    void start(int target, int durationMs = DefaultMs);
    // Sets the level the elapsed time calls for; at the end, the target exactly.
    void tick();
    // Jumps to the target and stops. For a switch-off in the middle of a fade:
    // the next play must not start quietly.
    void finish();
    // Stops where it is and sets nothing: the user took over the volume.
    void cancel() { m_running = false; }

    bool running() const { return m_running; }
    int target() const { return m_target; }

private:
    void set(int level);

    const Clock &m_clock;
    QDateTime m_start;
    int m_durationMs = DefaultMs;
    int m_target = 0;
    int m_lastLevel = -1;
    bool m_running = false;
};
