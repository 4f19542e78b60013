#pragma once

#include "radiocommands.h"

// Web radio stations.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class WebRadio : public WebRadioCommands
{
public:
    void WRQuickURL(int) override {}
    void WRDoPreset(int) override {}
    void WRAddStation() override {}
    void WRDelStation() override {}
    void WRStep(int) override {}
    void WRAct146() override {}
    void WRPlay() override {}
    void WRStop() override {}
};
