#include "autolist.h"

#include "platform/readfile.h"
#include "platform/text.h"

#include <QSaveFile>

QStringList LoadAutoList(const QString &path)
{
    // The file is a few dozen short lines; anything huge is not ours.
    const FileBytes in = readRegularFile(path, 16 * 1024 * 1024);
    if (in.fault != FileFault::None) {
        if (in.fault != FileFault::Missing)
            qWarning("velto: the schedule list %s is %s; it stays empty", qPrintable(path),
                     faultText(in.fault));
        return {};
    }
    const QString text = decodeText(in.bytes);
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
    // The reader drops one byte-order mark at the start: an entry that
    // begins with one keeps it only behind a mark of the file's own.
    if (!list.isEmpty() && list.front().startsWith(QChar(0xFEFF)))
        bytes += "\xEF\xBB\xBF";
    for (const QString &entry : list) {
        bytes += entry.toUtf8();
        bytes += '\n';
    }
    QSaveFile out(path);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit();
}
