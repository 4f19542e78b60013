#pragma once

#include "platform/cddrive.h"

#include <QString>
#include <QStringList>

#include <array>

// One track of the table, as a CD player's device reports it: the start as
// minute, second and frame of the disc (the two seconds before track 1
// included) and in milliseconds, and the length.
struct CdTrackTime
{
    qint16 Min = 0;
    qint16 Sec = 0;
    qint16 Frame = 0;
    qint32 Frames = 0; // Min * 4500 + Sec * 75 + Frame
    qint32 StartMs = 0;
    qint32 EndMs = 0; // StartMs + LengthMs - 1
    qint32 LengthMs = 0;
};

// The table of contents of a disc and the two identities it is looked up by.
struct CdTable
{
    std::array<CdTrackTime, 100> tracks{}; // by track number; 0 unused
    qint16 CDTracks = 0;
    qint32 CDSeconds = 0; // the disc's length in whole seconds
    // CDDB's identity: checksum byte, seconds, track count, 8 lower-case hex digits.
    QString CDDBId = QStringLiteral("0");
    // The classic CD player's: the packed starts added up, upper-case hex.
    QString CDPlayerId;
    // A playlist entry per track with its default title "Track  1".
    QStringList names;
};

// The table of the disc read. The seconds are the disc's whole length, not
// lead-out minus the first start as CDDB counts them; on a disc whose first
// track starts at 0:02 (every pressed CD) the two agree.
CdTable readCdTable(const CdDisc &disc);

// value in hexadecimal, the right-most `digits` of it zero-padded, lower case.
QString CDHex(qint64 value, int digits);

// The playlist text of a track: "03 - Intro  (01:05)".
QString MakeCDEntry(int track, const QString &title, qint32 lengthMs);

// The track whose end is at or after the position (ms on the disc), counting
// from track 1; 0 when none of the 99 slots is.
int findCdTrack(const CdTable &table, qint32 positionMs);

// What the status label shows for a device mode: "Playing", "No Disc"...
QString cdStatusWord(int mode, bool paused);
