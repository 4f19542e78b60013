#include "autolist.h"

#include "platform/text.h"

#include <QFile>
#include <QSaveFile>

QStringList LoadAutoList(const QString &path)
{
    QFile in(path);
    // The file is a few dozen short lines; anything huge is not ours.
    if (!in.open(QIODevice::ReadOnly) || in.size() > 16 * 1024 * 1024)
        return {};
    const QString text = decodeText(in.readAll());
    QStringList list;
    for (const QString &line : splitLines(text)) {
        if (!line.trimmed().isEmpty())
            list << line;
    }
    return list;
}

bool SaveAutoList(const QString &path, const QStringList &list)
{
    QByteArray bytes;
    for (const QString &entry : list) {
        bytes += entry.toUtf8();
        bytes += '\n';
    }
    QSaveFile out(path);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit();
}
