#pragma once

#include "toolcommands.h"

// The notepad mode.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class Notepad : public NotepadCommands
{
public:
    void NoteLoad() override {}
    void NoteSave() override {}
    void NoteClear() override {}
    void NotePrint() override {}
};
