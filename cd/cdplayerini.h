#pragma once

#include <QByteArrayView>
#include <QList>
#include <QPair>
#include <QString>

// What the classic CD player's title file says about one disc.
struct CdPlayerTitles
{
    // The disc's section is in the file: its titles count as loaded, even
    // when the file stops being read at a wrong track count.
    bool found = false;
    // 0-based track and title, in the order of the file; a later line for the
    // same track wins.
    QList<QPair<int, QString>> titles;
    // What the user must be told; empty when nothing.
    QString message;
};

// Reads the section "[id]" of the file's bytes for a disc of trackCount
// tracks. Sections compare without regard to case and trailing blanks; the
// keys "0", "1", ... are 0-based tracks, "NUMTRACKS" must match the disc;
// "ARTIST", "TITLE" and "ORDER" are skipped. Any other key counts as the
// number it begins with, 0 when it begins with none: such a line names track
// 1, as the old file readers did.
CdPlayerTitles readCdPlayerIni(QByteArrayView ini, const QString &id, int trackCount);
