#pragma once

#include <QDir>
#include <QFile>
#include <QList>
#include <QString>

#include <sys/stat.h>

// Names that are no regular file: a named pipe no one writes to (opening it
// to read waits for a writer), a link to /dev/zero (its size reads 0, its
// bytes never end) and a folder. Each is made as folder/<kind>/name, so a
// reader that looks for a name beside another file finds it there.
struct OddFile
{
    QString kind, path;
};

inline QList<OddFile> makeOddFiles(const QString &folder, const QString &name)
{
    QList<OddFile> files;
    const auto place = [&](const QString &kind) {
        QDir().mkpath(folder + '/' + kind);
        return folder + '/' + kind + '/' + name;
    };
    if (const QString path = place("pipe"); ::mkfifo(QFile::encodeName(path), 0600) == 0)
        files.push_back({"pipe", path});
    if (const QString path = place("zero"); QFile::link(QStringLiteral("/dev/zero"), path))
        files.push_back({"zero", path});
    if (const QString path = place("folder"); QDir().mkpath(path))
        files.push_back({"folder", path});
    return files;
}
