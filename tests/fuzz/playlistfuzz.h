#pragma once

#include "fuzztarget.h"

#include "player/playlist.h"

// A list read from the bytes holds both columns in step and within the
// limit, and saving it then reading the saved file gives every path back.
inline void fuzzPlaylist(const QByteArray &input, const QString &name)
{
    Playlist::ListFile list;
    list.file = fuzzScratchFile(name);
    list.bytes = input;
    list.ok = true;
    PlaylistState state;
    Playlist playlist(state);
    playlist.PlRead(list);
    FUZZ_CHECK(state.PlNames.size() == state.PlPath.size());
    FUZZ_CHECK(state.PlPath.size() <= Playlist::kMaxEntries);

    const QString saved = fuzzScratchFile(QStringLiteral("saved.m3u"));
    FUZZ_CHECK(playlist.WritePL(saved).isEmpty());
    QStringList kept;
    for (const QString &path : state.PlPath)
        if (!path.isEmpty() && !path.contains(QLatin1String("**")))
            kept << path;
    PlaylistState again;
    FUZZ_CHECK(Playlist(again).PlRead(saved).isEmpty());
    again.PlPath.removeAll(QString());
    FUZZ_CHECK(again.PlPath == kept);
}
