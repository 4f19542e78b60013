#include "commandline.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

QString CleanCmdLine(const QStringList &names, const QString &workingFolder)
{
    QString name = names.join(QLatin1Char(' ')).trimmed();
    if (name.size() >= 2 && name.startsWith(QLatin1Char('"')) && name.endsWith(QLatin1Char('"')))
        name = name.mid(1, name.size() - 2);
    if (name.isEmpty())
        return {};
    if (name.startsWith(QLatin1String("file:"), Qt::CaseInsensitive)) {
        const QUrl url(name);
        if (url.isLocalFile())
            name = url.toLocalFile();
    }
    if (name.contains(QLatin1String("://")))
        return name; // a stream address stays as it is
    return QDir::cleanPath(QDir(workingFolder).absoluteFilePath(name));
}

QStringList openedNames(const QStringList &names, const QString &workingFolder)
{
    if (names.size() > 1) {
        QStringList each;
        for (const QString &name : names) {
            const QString path = CleanCmdLine({name}, workingFolder);
            if (path.isEmpty() || (!path.contains(QLatin1String("://")) && !QFileInfo::exists(path)))
                break;
            each << path;
        }
        if (each.size() == names.size())
            return each;
    }
    const QString one = CleanCmdLine(names, workingFolder);
    return one.isEmpty() ? QStringList() : QStringList{one};
}
