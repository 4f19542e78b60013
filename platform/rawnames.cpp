#include "rawnames.h"

#include "text.h"

#include <QFile>
#include <QRegularExpression>

#include <dirent.h>

QStringList undecodableNames(const QString &folder, const QString &pattern, int limit)
{
    QStringList names;
    DIR *dir = ::opendir(QFile::encodeName(folder).constData());
    if (!dir)
        return names;
    const QRegularExpression match(QRegularExpression::wildcardToRegularExpression(pattern),
                                   QRegularExpression::CaseInsensitiveOption);
    while (names.size() < limit) {
        const dirent *entry = ::readdir(dir);
        if (!entry)
            break;
        const QByteArrayView raw(entry->d_name);
        if (raw.isValidUtf8())
            continue;
        const QString shown = fromWindows1252(raw);
        if (match.match(shown).hasMatch())
            names << shown;
    }
    ::closedir(dir);
    return names;
}
