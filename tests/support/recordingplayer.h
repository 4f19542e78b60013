#pragma once

#include "player/playlist.h"

#include <QList>
#include <QObject>

// Notes the current entry each time a playlist window asks for it to play:
// what those windows ask of playback, without playing anything.
class RecordingPlayer
{
public:
    explicit RecordingPlayer(const PlaylistState &state) : m_state(state) {}
    QList<int> played;

    template<typename Source> void listen(Source &source)
    {
        QObject::connect(&source, &Source::playRequested, &source,
                         [this] { played << m_state.CurTrack; });
    }

private:
    const PlaylistState &m_state;
};
