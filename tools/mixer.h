#pragma once

#include "toolcommands.h"

// Starts the desktop's volume mixer.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class Mixer : public ToolCommands
{
public:
    void ShowMixer() override {}
};
