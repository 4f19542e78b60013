#pragma once

#include "radiocommands.h"

// The web browser mode.
// Each command reaches its entry point here; the work behind it arrives with
// that mode, so until then the command does nothing.
class WebBrowser : public WebCommands
{
public:
    void WebNav(int) override {}
    void WebSearch() override {}
    void QuickLink(int) override {}
};
