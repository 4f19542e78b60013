#pragma once

#include "playlist.h"

#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

// The breadth-first walk behind a folder scan, one small step at a time:
// the files of a folder first, then its sub-folders join the end of the queue.
class FolderWalk
{
public:
    FolderWalk(const QString &validExt, bool friendlyNames);

    // Queues a folder to walk; a folder already walked is ignored.
    void add(const QString &folder);
    // Handles one file or opens one folder. False once there is nothing left
    // or the list is full.
    bool step(PlaylistState &state);

    // The "ValidExt" test: the upper-cased extension (the whole name when it
    // has no ".") found anywhere inside the upper-cased list text.
    static bool accepts(const QString &fileName, const QString &validExtUpper);

private:
    void queueSubfolders(const QString &folder);

    QString m_validExt;
    bool m_friendly;
    QStringList m_folders;
    qsizetype m_next = 0;
    QString m_current;
    QStringList m_files;
    qsizetype m_fileIndex = 0;
    // Canonical folders seen, so links back up the tree do not loop.
    QSet<QString> m_visited;
};

// A folder scan that runs in slices on the event loop, so the window keeps
// painting and answering while a large tree is read.
class FolderScan : public QObject
{
    Q_OBJECT
public:
    explicit FolderScan(PlaylistState &state, QObject *parent = nullptr);
    ~FolderScan() override;

    // Starts a scan; while one runs, the folder joins it.
    void start(const QString &folder, const QString &validExt, bool friendlyNames = true);
    // Stops the scan; what it added stays. finished() follows.
    void cancel();
    bool isRunning() const;

    // The whole scan at once. Returns the number of entries added.
    static int scanAll(PlaylistState &state, const QString &folder, const QString &validExt,
                       bool friendlyNames = true);

signals:
    // Entries in the list so far; at most about every 100 ms.
    void progress(int entries);
    void finished();

private:
    void slice();
    void stop();

    PlaylistState &m_state;
    FolderWalk *m_walk = nullptr;
    QTimer m_timer;
    QElapsedTimer m_sinceProgress;
};
