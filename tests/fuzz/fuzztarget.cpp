#include "fuzztarget.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

QString fuzzScratchFile(const QString &name)
{
    static QTemporaryDir dir(QDir::tempPath() + QStringLiteral("/velto-fuzz-XXXXXX"));
    return dir.filePath(name);
}

QString fuzzWriteScratch(const QString &name, const QByteArray &bytes)
{
    const QString path = fuzzScratchFile(name);
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(bytes) != bytes.size())
        qFatal("fuzz: cannot write the scratch file %s", qPrintable(path));
    return path;
}
