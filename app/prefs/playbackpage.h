#pragma once

#include "app/prefs/prefspage.h"

// The media device and how one item follows another.
class PlaybackPage : public PrefsPage
{
    Q_OBJECT
public:
    PlaybackPage(const Settings &settings, Dialogs &dialogs);
};
