#include "moduleloader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>

QStringList moduleFiles(const QString &name, const QString &builtAt)
{
    QStringList files;
    const QString programDir = QCoreApplication::applicationDirPath();
    if (!programDir.isEmpty()) {
        const QDir dir(programDir);
        files << dir.filePath(name) << dir.filePath(QStringLiteral("../lib/velto/") + name);
    }
    if (!builtAt.isEmpty())
        files << builtAt;
    return files;
}

LoadedModule loadModule(const QStringList &files, const char *symbol)
{
    LoadedModule result;
    QStringList problems;
    for (const QString &file : files) {
        if (!QFileInfo::exists(file))
            continue;
        QLibrary library(file);
        library.setLoadHints(QLibrary::PreventUnloadHint);
        if (!library.load()) {
            problems << library.errorString();
            continue;
        }
        result.entry = library.resolve(symbol);
        if (result.entry)
            return result;
        problems << QStringLiteral("%1 has no %2").arg(file, QLatin1String(symbol));
    }
    if (problems.isEmpty())
        problems << QStringLiteral("not found: %1").arg(files.join(QStringLiteral(", ")));
    result.problem = problems.join(QStringLiteral("; "));
    return result;
}
