#pragma once

#include "player/playlistcontrol.h"
#include "recordingplayer.h"
#include "recordingsurface.h"

#include <QListWidget>

// A playlist part over a state and settings of its own, with a list to show
// it in and a player that only records. The settings may change at any time:
// the part reads them when it needs them.
template<typename DialogsType> struct PlaylistRig
{
    PlaylistState state;
    QString path;
    qint16 clearFirst = 0, autoPlay = 0, friendly = 1;
    QString validExt = QStringLiteral("mp3");
    bool cdMode = false;
    DialogsType dialogs;
    RecordingSurface skin;
    RecordingPlayer player{state};
    PlaylistControl control{
        state, {path, clearFirst, autoPlay, friendly, validExt, cdMode}, skin, dialogs};
    QListWidget list;

    PlaylistRig() { player.listen(control); }
};
