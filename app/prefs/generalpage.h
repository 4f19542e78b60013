#pragma once

#include "app/prefs/prefspage.h"

// What Velto opens at start and how its window behaves.
class GeneralPage : public PrefsPage
{
    Q_OBJECT
public:
    GeneralPage(const Settings &settings, Dialogs &dialogs);
};
