#include "programfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#ifndef VELTO_SOURCE_DATA_DIR
#define VELTO_SOURCE_DATA_DIR ""
#endif

QString ProgramFolder::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/velto");
}

QString ProgramFolder::shippedDataPath()
{
    const QByteArray fromEnv = qgetenv("VELTO_DATA_DIR");
    if (!fromEnv.isEmpty())
        return QString::fromLocal8Bit(fromEnv);
    const QString installed =
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/velto");
    if (QFileInfo(installed).isDir())
        return QDir::cleanPath(installed);
    return QStringLiteral(VELTO_SOURCE_DATA_DIR);
}

QString ProgramFolder::prepare(const QString &shippedData) const
{
    QDir root;
    if (!root.mkpath(m_path) || !QFileInfo(m_path).isWritable())
        return QStringLiteral("Velto cannot create its folder\r%1\rSkins, playlists and "
                              "station lists will not be saved this time.")
            .arg(m_path);
    if (shippedData.isEmpty() || !QFileInfo(shippedData).isDir())
        return {};
    const QDir from(shippedData);
    QDirIterator it(shippedData, QDir::Files | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = file(from.relativeFilePath(source));
        if (QFileInfo::exists(target))
            continue; // never overwrite what the user has
        root.mkpath(QFileInfo(target).absolutePath());
        if (!QFile::copy(source, target))
            qWarning("velto: could not copy %s to %s", qPrintable(source), qPrintable(target));
        else
            QFile(target).setPermissions(QFile(target).permissions() | QFile::WriteOwner);
    }
    return {};
}
