#include "platform/findfile.h"

#include <QDir>
#include <QFileInfo>

namespace {

bool fits(const QFileInfo &info, bool wantFile)
{
    return wantFile ? info.isFile() : info.isDir();
}

} // namespace

QString findFileNoCase(const QString &folder, const QString &relativeName)
{
    QString name = relativeName;
    name.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (name.size() >= 2 && name.at(1) == QLatin1Char(':') && name.at(0).isLetter())
        name.remove(0, 2);
    const QStringList parts = name.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (parts.isEmpty() || name.contains(QChar(0)))
        return {};

    QString current = folder.isEmpty() ? QStringLiteral(".") : folder;
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString &part = parts.at(i);
        const bool last = i == parts.size() - 1;
        if (!last && (part == QLatin1String(".") || part == QLatin1String(".."))) {
            current += QLatin1Char('/') + part;
            continue;
        }
        const QString exact = current + QLatin1Char('/') + part;
        if (fits(QFileInfo(exact), last)) {
            current = exact;
            continue;
        }
        const QStringList entries = QDir(current).entryList(
            QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
        QString found;
        for (const QString &entry : entries) {
            if (entry.compare(part, Qt::CaseInsensitive) == 0 &&
                fits(QFileInfo(current + QLatin1Char('/') + entry), last)) {
                found = current + QLatin1Char('/') + entry;
                break;
            }
        }
        if (found.isEmpty())
            return {};
        current = found;
    }
    return QDir::cleanPath(current);
}

QString firstExistingNoCase(const QString &folder, const QStringList &names)
{
    const QString prefix =
        folder.isEmpty() || folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    const QDir dir(folder.isEmpty() ? QStringLiteral(".") : folder);
    QStringList entries;
    bool listed = false;
    for (const QString &name : names) {
        if (QFileInfo(dir.filePath(name)).isFile())
            return prefix + name;
        if (!listed) {
            entries = dir.entryList(QDir::Files | QDir::Hidden | QDir::System);
            listed = true;
        }
        for (const QString &entry : entries) {
            if (entry.compare(name, Qt::CaseInsensitive) == 0)
                return prefix + entry;
        }
    }
    return {};
}
