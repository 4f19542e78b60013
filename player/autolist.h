#pragma once

#include <QString>
#include <QStringList>

// The schedule list file: one entry per line. Entries keep their blanks,
// because the schedule reads them by character position.
QStringList LoadAutoList(const QString &path);
// Replaces the file whole or not at all. False when it could not be written.
bool SaveAutoList(const QString &path, const QStringList &list);
