#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QStringView>

// Text of files Velto did not write (playlists, tags, skins, lyrics): they
// come as UTF-8 or as the old single-byte Windows-1252. The five bytes that
// Windows-1252 leaves unassigned map to the C1 controls of the same number,
// so every byte survives a round trip.
QString fromWindows1252(QByteArrayView bytes);
// Characters without a Windows-1252 form become "?".
QByteArray toWindows1252(QStringView text);
// A UTF-8 byte-order mark dropped, the rest UTF-8 when it is valid, else
// Windows-1252, which decodes every byte.
QString decodeText(QByteArrayView bytes);

// Lines end at LF, CR LF or a lone CR; a last line without an end counts.
QStringList splitLines(const QString &text);

// At least two digits, zero padded, after a minus sign if any: "07", "-03".
QString twoDigits(int n);

// The leading number of a text, as every file and setting of Velto reads
// numbers: blanks are ignored, then sign, digits, decimals and an exponent
// ("e" or "d"); no number gives 0.
double leadingNumber(QStringView text);
