#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>

// The cue sheet of a disc image, as burning programs write it: the file that
// holds the sectors, the tracks with their first sectors, and the titles.
// Only what a disc image needs is kept; REM lines and unknown keywords are
// skipped.
struct CueSheet
{
    static constexpr int kSectorBytes = 2352;
    static constexpr int kMaxTracks = 99;

    struct File
    {
        QString name; // as written, quotes removed
        QString type; // BINARY, MOTOROLA, WAVE ... upper-cased
    };
    struct Track
    {
        int number = 0;
        QString type;      // AUDIO, MODE1/2352 ... upper-cased
        qint32 start = -1; // INDEX 01 in sectors from the start of the file; -1 when missing
        int file = -1;     // index into files; -1 before any FILE
        QString title;     // CD-Text, empty when none
        QString performer;
    };

    QList<File> files;
    QList<Track> tracks;
    QString title; // the disc's
    QString performer;
};

// Reads any bytes; what it cannot make sense of it leaves out. Text is UTF-8
// when valid, else Windows-1252.
CueSheet parseCueSheet(QByteArrayView bytes);

// Why the sheet cannot be played as an audio CD image whose one file holds
// imageBytes bytes; empty when it can. Each reason is one sentence for the user.
QString cueSheetProblem(const CueSheet &sheet, qint64 imageBytes);

// "mm:ss:ff" in sectors (75 a second); -1 when it is no such time.
qint32 cueTime(QStringView text);
