#include "visscan.h"

#include <QDir>
#include <QFileInfo>

namespace {

// The sub-folders of folder whose names end in ".DIR" (any case), sorted.
QStringList dirEntries(const QString &folder)
{
    QStringList found;
    const QDir dir(folder);
    for (const QString &name :
         dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase)) {
        if (name.endsWith(QLatin1String(".DIR"), Qt::CaseInsensitive))
            found << name;
    }
    return found;
}

} // namespace

VisScan::VisScan(QObject *parent) : QObject(parent)
{
    connect(&m_scan, &FolderScan::progress, this, &VisScan::progress);
    connect(&m_scan, &FolderScan::finished, this, [this] { emit finished(m_stopped); });
}

bool VisScan::scan(const QString &folder)
{
    stop();
    m_found = PlaylistState();
    m_folders = 0;
    m_stopped = false;
    m_folder = folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/');
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        emit finished(false);
        return false;
    }
    for (const QString &name : dirEntries(folder)) {
        m_found.PlNames << name;
        m_found.PlPath << m_folder + name;
    }
    m_folders = int(m_found.PlPath.size());
    // Matched as the player's folder scan matches its extension list.
    m_scan.start(m_folder, QStringLiteral("M3U PLS"), true);
    return true;
}

void VisScan::stop()
{
    if (!m_scan.isRunning())
        return;
    m_stopped = true;
    m_scan.cancel();
}
