#pragma once

#include <QString>
#include <QStringList>

// Turns the names given on the command line into one path: a file manager passes
// a file:// URI, a script may split a name with blanks into several arguments.
QString CleanCmdLine(const QStringList &names, const QString &workingFolder);
