#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

// The engines too heavy to link into the program (media, web) are modules
// loaded the first time they are needed.

// Where module `name` is looked for: beside the program, in the installed
// library folder, then builtAt (the build tree's copy; may be empty).
QStringList moduleFiles(const QString &name, const QString &builtAt);

struct LoadedModule
{
    QFunctionPointer entry = nullptr; // null when no module would do
    QString problem;                  // why entry is null
};

// Loads the first of files that exists and has `symbol`. Safe on any thread.
// The module stays loaded for the life of the process: what it makes may
// outlive whoever loaded it.
LoadedModule loadModule(const QStringList &files, const char *symbol);
