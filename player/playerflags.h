#pragma once

// Player options the toggle commands flip; the playback tick reads them.
struct PlayerFlags
{
    bool IntroScan = false;
    bool StopAfterItem = false;
    bool RepeatItem = false;
    bool Shuffle = false;
};
