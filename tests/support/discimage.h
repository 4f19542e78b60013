#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// An audio CD image made for a test: one .bin of raw sectors, a tone of its
// own pitch per track, and the .cue that describes it. Nothing comes from a
// real disc.
struct DiscImage
{
    static constexpr int kLeadIn = 150; // sectors before track 1 on every CD

    // Track lengths in sectors (75 a second).
    QList<qint32> sectors;
    QStringList titles; // CD-Text TITLE per track, written when not empty
    QString albumTitle, albumPerformer;
    // The .bin's name; by default the cue's name with ".bin".
    QString binName;

    // Writes folder/name.cue and the image; returns the cue's path, or an empty
    // text when a file could not be written.
    QString write(const QString &folder, const QString &name) const;
    // The cue sheet text write() puts beside the image.
    QByteArray cueText(const QString &binFile) const;
    // The sector bytes of the image (16-bit stereo, little-endian).
    QByteArray binBytes() const;

    // Worked out here from the sector counts alone, apart from the code under
    // test: every track's start counted from the disc's start (lead-in
    // included), the lead-out, and the two identities a disc is known by.
    QList<qint32> offsets() const;
    qint32 leadOut() const;
    QString cddbId() const;     // 8 lower-case hex digits
    QString cdPlayerId() const; // upper-case hex, no padding
};
