#pragma once

#include <QString>
#include <QStringList>

// Turns the names given on the command line into one path: a file manager passes
// a file:// URI, a script may split a name with blanks into several arguments.
QString CleanCmdLine(const QStringList &names, const QString &workingFolder);

// What the command line opens: each name on its own when there are several and
// every one names a file, folder or address (a file manager passing a
// selection), else the one path CleanCmdLine makes of them; empty for none.
QStringList openedNames(const QStringList &names, const QString &workingFolder);
