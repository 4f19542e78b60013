#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

// Readers of a CDDB server's replies (protocol level 4, over HTTP). They take
// any text: a reply that is no CDDB answer reads as "not found" or as no titles.

// The reply's bytes as text, line by line: UTF-8 where a line is valid UTF-8,
// else Latin-1, so a server that mixes the two loses no letter.
QString decodeCddbReply(QByteArrayView bytes);

// The text after the first "key=" up to the next carriage return; "" when the
// key is absent or no carriage return follows its value.
QString CDDBField(const QString &reply, const QString &key);

struct CddbMatch
{
    enum class Kind { Found, Multiple, NotFound } kind = Kind::NotFound;
    QString category; // Found only: "rock", "misc" ...
};

// "200 " anywhere in the reply is a match (its category is the word after it);
// else "201 " is taken as several matches; anything else is no match.
CddbMatch readQueryReply(const QString &reply);

struct CddbDiscEntry
{
    QStringList titles;    // one per track, "" where the reply names none
    QString artist, album; // from "DTITLE=artist / album"; both empty when absent
};

CddbDiscEntry readDiscReply(const QString &reply, int trackCount);
