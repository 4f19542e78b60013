#pragma once

#include <QChar>
#include <QString>

// What the command table asks of the desk tools.
// The numbers in the comments are the commands that reach each method.

class CalculatorCommands
{
public:
    virtual ~CalculatorCommands() = default;
    virtual void AddDigit(QChar digit) = 0;  // 40-50
    virtual void CalcKey(int key) = 0;       // 51-68
    virtual void SelectConversionFile() = 0; // 69
};

class StopwatchCommands
{
public:
    virtual ~StopwatchCommands() = default;
    virtual void TimerFn(int function) = 0; // 70-75 as 1-6
};

class NotepadCommands
{
public:
    virtual ~NotepadCommands() = default;
    virtual void NoteLoad() = 0;  // 76
    virtual void NoteSave() = 0;  // 77
    virtual void NoteClear() = 0; // 78
    virtual void NotePrint() = 0; // 79
};

class ToolCommands
{
public:
    virtual ~ToolCommands() = default;
    virtual void ShowMixer() = 0; // 29
};
