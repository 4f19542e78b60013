#pragma once

#include "playercommands.h"

// The playlist as the user edits it: dialogs, moves and folder scans.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class PlaylistControl : public PlaylistCommands
{
public:
    void PlMoveEntry(int) override {}
    void PlClear() override {}
    void PlLoad() override {}
    void PlSaveAs() override {}
    void OpenMedia() override {}
    void AddFromDir() override {}
    int selectedIndex() const override { return -1; }
};
