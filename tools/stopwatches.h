#pragma once

#include "toolcommands.h"

// The ten stopwatch timers of the clock mode.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class Stopwatches : public StopwatchCommands
{
public:
    void TimerFn(int) override {}
};
