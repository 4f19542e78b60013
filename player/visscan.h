#pragma once

#include "folderscan.h"
#include "playlist.h"

#include <QObject>

// What the visual playlist selector offers: the ".DIR" folders of the folder
// it shows, then every M3U and PLS file of the tree, found breadth-first by
// the player's folder scan, a slice at a time so the window stays live.
class VisScan : public QObject
{
    Q_OBJECT
public:
    explicit VisScan(QObject *parent = nullptr);

    // Starts over with folder; a scan still running is stopped first. False
    // when the folder does not exist (nothing is listed then).
    bool scan(const QString &folder);
    // The stop flag: the scan ends with what it found so far.
    void stop();
    bool isRunning() const { return m_scan.isRunning(); }

    QString folder() const { return m_folder; }
    int count() const { return int(m_found.PlPath.size()); }
    QString path(int index) const { return m_found.PlPath.value(index); }
    QString name(int index) const { return m_found.PlNames.value(index); }
    bool isFolder(int index) const { return index >= 0 && index < m_folders; }

signals:
    // Entries found so far, now and then while the scan runs.
    void progress(int found);
    void finished(bool stopped);

private:
    PlaylistState m_found; // names and paths, as the playlist keeps them
    int m_folders = 0;
    QString m_folder;
    bool m_stopped = false;
    FolderScan m_scan{m_found};
};
