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

namespace {

// QFile::copy flushes every file to disk: some 30 flushes, tens of
// milliseconds before a new user's first window. Shipped files can be copied
// again, so these skip the flush; each is renamed into place once whole.
bool copyShipped(const QString &source, const QString &target)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = in.readAll();
    const QString part = target + QStringLiteral(".part");
    QFile out(part);
    if (out.open(QIODevice::WriteOnly | QIODevice::Truncate) && out.write(bytes) == bytes.size() &&
        out.flush()) {
        out.close();
        if (QFile::rename(part, target))
            return true;
    }
    out.remove();
    return false;
}

} // namespace

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
    QDirIterator it(shippedData, QDir::Files | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString source = it.next();
        const QString target = file(from.relativeFilePath(source));
        if (QFileInfo::exists(target))
            continue; // never overwrite what the user has
        root.mkpath(QFileInfo(target).absolutePath());
        if (!copyShipped(source, target))
            qWarning("velto: could not copy %s to %s", qPrintable(source), qPrintable(target));
    }
    return {};
}
