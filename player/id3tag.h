#pragma once

#include "platform/text.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

// The 128-byte tag at the end of an MP3 file, as the program keeps it: text
// fields are fixed length (space padded, cut when longer), Track and Genre
// are single character codes.
struct TagRecord
{
    QString Title = QString(30, QLatin1Char(' '));
    QString Artist = QString(30, QLatin1Char(' '));
    QString Album = QString(30, QLatin1Char(' '));
    QString Year = QString(4, QLatin1Char(' '));
    QString Comment = QString(29, QLatin1Char(' '));
    int Track = 0;  // no tag: no track
    int Genre = 80; // no tag: "Hard Rock", kept on purpose
};

// What the track information window edits and saves.
struct TagFields
{
    QString title, artist, album, year, comment;
    QString track; // text of a number, "00" style
    int genre = 0; // index into genreList()
};

// 81 names, index = the stored byte. Starts with "Unknown", so every genre is
// stored one above the usual numbering; the spellings are kept as users know them.
const QStringList &genreList();
// Name shown for a stored genre byte; anything past the list is "Unknown".
QString genreName(int code);

// First case-insensitive "tag" in the bytes, 0-based; -1 when there is none.
qsizetype findTagMarker(const QByteArray &bytes);
// Fills a record from the file's last 256 bytes. The first "tag" wins, even
// one inside the audio; fields that run past the bytes are padded with spaces.
TagRecord readTag(const QByteArray &last256);
// The fields as the window shows them: trimmed, cut at a NUL, track "00".
TagFields fieldsFromRecord(const TagRecord &record);

enum class TagWrite { Added, Updated, Failed };

// Writes the tag into the file. Only the 128 tag bytes are written, in
// place: a temporary copy and rename would rewrite megabytes, need a
// writable folder and replace the file's identity (links, owner). A write
// that fails part way puts the old bytes and length back, so the file ends
// as it was; the written bytes are read back before the write counts. When
// a backup file is set, the old bytes are kept there until then, so a write
// cut by a crash or power loss is undone by restoreCutTagWrite at the next
// start.
TagWrite writeTag(const QString &file, const TagFields &fields);
void setTagBackupFile(const QString &path);
// Puts back the tail of the file whose tag write was cut, if the backup
// file holds one, and removes the backup. False when one was there and
// could not be put back (the backup is then kept for the next try).
bool restoreCutTagWrite(const QString &backupFile);
// The message for the user: "Tag Added!", "Tag Updated!" or
// "Error writing tag (is file in use?)!".
QString tagWriteMessage(TagWrite result);
