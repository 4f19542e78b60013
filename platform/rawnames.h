#pragma once

#include <QString>
#include <QStringList>

// Names in a folder that are not valid UTF-8 (written on a system that used
// Latin-1 or Windows-1252). Qt leaves them out of every listing and cannot open
// them, so the user can only be told. Returned decoded as Windows-1252, for
// showing; at most `limit` of them, matching the wildcard `pattern` (letter
// case ignored). An unreadable folder gives none.
QStringList undecodableNames(const QString &folder, const QString &pattern, int limit = 20);
