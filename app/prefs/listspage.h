#pragma once

#include "app/prefs/prefspage.h"

// How playlists show and fill, where covers come from, and the web
// browser's list of quick links.
class ListsPage : public PrefsPage
{
    Q_OBJECT
public:
    ListsPage(const Settings &settings, Dialogs &dialogs);
};

// Extensions as the folder scan reads them: separated by single blanks, with
// commas, semicolons, leading dots and "*." taken away ("*.mp3, .ogg" gives
// "mp3 ogg").
QString normaliseExtensions(const QString &text);
