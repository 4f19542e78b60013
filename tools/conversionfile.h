#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>

// A calculator conversion file (".ccf") as read: one conversion a line,
// "name,factor,offset", blank lines skipped and every other line kept as it
// stands (lines without a comma too: they convert nothing). Text that is no
// conversion file (NUL bytes) gives no lines; lines too long for one are
// left out. The messages say so.
struct ConversionFile
{
    QStringList lines;
    QStringList messages;
    bool isText = true;
};

// The bytes of a file at most this long are read; anything larger is no
// conversion list anyone wrote.
constexpr qint64 kMaxConversionFileBytes = 8 * 1024 * 1024;
constexpr qsizetype kMaxConversionLine = 1000;

ConversionFile readConversionFile(QByteArrayView bytes, const QString &name);

// One line as a conversion: result = value x factor + offset.
struct Conversion
{
    QString name; // before the first ",", the whole line without one
    double factor = 1;
    double offset = 0;
    bool valid = false; // the line holds a ","
};

// The factor is the leading number after the first ",", the offset the one
// after the second (0 without one); text that is no number reads as 0.
Conversion parseConversion(const QString &line);
