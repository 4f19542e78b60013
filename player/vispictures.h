#pragma once

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSize>
#include <QThreadPool>

#include <atomic>
#include <memory>

// The pictures of the visual selector's boxes: each entry's cover (found by
// name beside it, as album covers are), else the default picture, decoded
// and scaled to the box on worker threads, so paging never waits for a
// large photo. A picture is scaled once and kept for the next showing.
class VisPictures : public QObject
{
    Q_OBJECT
public:
    VisPictures(QString noCoverFile, QSize box, QObject *parent = nullptr);
    ~VisPictures() override;

    // Asks for the pictures of a page's entries (box i shows entries[i]).
    // Cached ones answer at once, the others as they are decoded; answers to
    // an earlier ticket that has not been loaded yet are dropped.
    void request(int ticket, const QStringList &entries);
    // Drops everything not loaded yet.
    void cancel();
    // True while pictures of the last request are still being decoded.
    bool busy() const { return m_pending > 0; }

    // The picture file of an entry: its cover, else the default picture.
    static QString pictureFile(const QString &entry, const QString &noCoverFile);
    // The picture at most box in size, aspect kept; null when the file holds
    // none Velto can decode (missing, truncated past its header, too large).
    static QImage loadScaled(const QString &file, QSize box);

signals:
    void pictureReady(int ticket, int box, const QImage &picture);

private:
    void deliver(int ticket, int generation, int box, const QString &entry, const QImage &picture);

    QString m_noCover;
    QSize m_box;
    QCache<QString, QImage> m_cache;
    std::shared_ptr<std::atomic<int>> m_generation = std::make_shared<std::atomic<int>>(0);
    int m_pending = 0;
    QThreadPool m_pool;
};
