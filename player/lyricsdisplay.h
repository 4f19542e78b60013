#pragma once

#include "player/lyrics.h"

class QListWidget;

// The words of the playing item in the lyrics list: the line being sung is
// selected and kept in the middle of the list as the position advances.
class LyricsDisplay
{
public:
    explicit LyricsDisplay(QListWidget &list) : m_list(list) {}

    // Fills the list from a lyric file ("No Lyrics" when there is none).
    void LoadLyrics(const QString &lyricFile);
    // One playback tick. Does nothing while the list is hidden or no line is timed.
    void ShowLyrics(qint64 positionMs);
    // A double click on a row: the position to seek to, or -1 for none.
    qint64 Lyrics_DblClick(int row);

    bool LyricsLoaded() const { return m_lyrics.LyricsLoaded; }

private:
    void select(int row);

    QListWidget &m_list;
    LyricsData m_lyrics;
    int m_line = 0;
};
