#pragma once

#include "app/prefs/prefspage.h"

// Where CD track titles are looked up.
class CdPage : public PrefsPage
{
    Q_OBJECT
public:
    CdPage(const Settings &settings, Dialogs &dialogs);
};
