#pragma once

#include "toolcommands.h"

// The calculator mode and its conversion files.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class Calculator : public CalculatorCommands
{
public:
    void AddDigit(QChar) override {}
    void CalcKey(int) override {}
    void SelectConversionFile() override {}
};
