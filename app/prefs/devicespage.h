#pragma once

#include "app/prefs/prefspage.h"

// The FM tuner card and the external serial display.
class DevicesPage : public PrefsPage
{
    Q_OBJECT
public:
    DevicesPage(const Settings &settings, Dialogs &dialogs);
};
