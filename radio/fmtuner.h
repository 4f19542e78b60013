#pragma once

#include "radiocommands.h"

// The FM tuner card front end.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class FmTuner : public FmCommands
{
public:
    void FMSetScan(int) override {}
    void FMTuneDown() override {}
    void FMTuneUp() override {}
    void FMPrevPreset() override {}
    void FMNextPreset() override {}
    void FMShowFreq() override {}
    void FMAct87() override {}
    void FMStep(int) override {}
    void FMEnterFreq() override {}
    void FMPresetKey(int) override {}
};
