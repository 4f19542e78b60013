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
    for (const char *kind : {"pipe", "zero", "folder"}) {
        const QString dir = folder + '/' + kind;
        QDir().mkpath(dir);
        const QString path = dir + '/' + name;
        const QString k = QString::fromLatin1(kind);
        bool made = false;
        if (k == "pipe")
            made = ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
        else if (k == "zero")
            made = QFile::link(QStringLiteral("/dev/zero"), path);
        else
            made = QDir().mkpath(path);
        if (made)
            files.push_back({k, path});
    }
    return files;
}
