#include "lyricsdisplay.h"

#include <QListWidget>

void LyricsDisplay::LoadLyrics(const QString &lyricFile)
{
    m_lyrics = ::LoadLyrics(lyricFile);
    // Line 0 has no time, and a line without a time is never followed: start at the first.
    m_line = 1;
    m_list.clear();
    m_list.addItems(m_lyrics.lines);
    m_list.scrollToTop();
}

void LyricsDisplay::ShowLyrics(qint64 positionMs)
{
    if (m_list.isHidden() || !m_lyrics.LyricsLoaded)
        return;
    const LyricStep step = PlayLyrics(m_lyrics, positionMs, m_line);
    m_line = step.line;
    if (step.row >= 0 && step.row != m_list.currentRow())
        select(step.row);
}

qint64 LyricsDisplay::Lyrics_DblClick(int row)
{
    const LyricJump jump = lyricsDoubleClick(m_lyrics, row);
    if (jump.line >= 0)
        m_line = jump.line;
    return jump.seekMs;
}

void LyricsDisplay::select(int row)
{
    m_list.setCurrentRow(row);
    if (QListWidgetItem *item = m_list.item(row))
        m_list.scrollToItem(item, QAbstractItemView::PositionAtCenter);
}
