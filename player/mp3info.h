#pragma once

#include "id3tag.h"

#include <QString>

// What GetMP3Info found, for the three track labels (10, 11, 12), the two
// segment displays (4, 5) and the shared tag record.
struct Mp3Info
{
    // False when the file is missing, unreadable or under 256 bytes: the
    // labels and displays keep what they showed before.
    bool examined = false;
    QString bitRate;          // label 10, kbit/s
    QString sampleRate;       // label 11, kHz
    QString mode;             // label 12
    int bitRateNumber = 0;    // display 4
    int sampleRateNumber = 0; // display 5
    TagRecord tag;            // the reset record when nothing was read
};

// Reads the frame header at byte 0 (no search for a sync word) and the tag
// among the last 256 bytes.
Mp3Info GetMP3Info(const QString &file);

// The same from the first bytes and the last 256 bytes of a file.
Mp3Info mp3InfoFromBytes(const QByteArray &head, const QByteArray &last256);

// MP2, MP3 and MPA files, the ones whose frame header and tag are read.
bool isMpegAudio(const QString &file);
