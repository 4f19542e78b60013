#pragma once

#include <QString>

class PlayerPart;
struct PlaylistState;

// What plays, as the desktop's media controls and `velto --status` tell it.
struct NowPlaying
{
    enum class State { Stopped, Playing, Paused };
    State state = State::Stopped;
    int entry = 0; // 1-based; 0 when no entry is current
    int count = 0;
    QString file;
    QString title; // the tag's title, else the name the list shows
    QString artist;
    QString album;
    QString cover; // the picture file shown; empty for none or one inside the media file
    qint64 lengthMs = 0;
    qint64 positionMs = 0;
    bool shuffle = false;
    bool repeat = false;
};

NowPlaying nowPlaying(PlayerPart &player, const PlaylistState &playlist);

// Three lines: the state, "artist - title" (or the title), "position / length".
QString statusText(const NowPlaying &now);
