#include "vispictures.h"

#include "albumcover.h"

#include "platform/readfile.h"

#include <QFile>
#include <QImageReader>
#include <QThread>

namespace {

// About 30 MiB of scaled pictures: some hundred pages of boxes.
constexpr qsizetype kCacheBytes = 30 * 1024 * 1024;

QString withoutExtension(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    return dot > slash ? path.left(dot) : path;
}

} // namespace

VisPictures::VisPictures(QString noCoverFile, QSize box, QObject *parent)
    : QObject(parent), m_noCover(std::move(noCoverFile)), m_box(box)
{
    m_cache.setMaxCost(kCacheBytes);
    // Decoding is the slow part; more threads than cores would only queue.
    m_pool.setMaxThreadCount(std::max(1, QThread::idealThreadCount()));
}

VisPictures::~VisPictures()
{
    cancel();
    m_pool.waitForDone();
}

QString VisPictures::pictureFile(const QString &entry, const QString &noCoverFile)
{
    const QString cover = AlbumCover::FindCover(withoutExtension(entry));
    return cover.isEmpty() ? noCoverFile : cover;
}

QImage VisPictures::loadScaled(const QString &file, QSize box)
{
    QFile in;
    if (file.isEmpty() ||
        openRegularFile(in, file, QIODevice::ReadOnly, kMaxPictureFileBytes) != FileFault::None)
        return {};
    QImageReader reader(&in);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    // JPEG decodes straight to a smaller size, at a fraction of the cost.
    if (size.isValid() && (size.width() > box.width() || size.height() > box.height()))
        reader.setScaledSize(size.scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    QImage picture = reader.read();
    if (picture.isNull())
        return {};
    if (picture.width() > box.width() || picture.height() > box.height())
        picture = picture.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return picture;
}

void VisPictures::request(int ticket, const QStringList &entries)
{
    cancel();
    const int generation = *m_generation;
    for (int box = 0; box < entries.size(); ++box) {
        const QString &entry = entries[box];
        if (const QImage *cached = m_cache.object(entry)) {
            emit pictureReady(ticket, box, *cached);
            continue;
        }
        ++m_pending;
        const auto current = m_generation;
        m_pool.start(
            [this, current, generation, ticket, box, entry, noCover = m_noCover, size = m_box] {
                if (*current != generation)
                    return;
                QImage picture = loadScaled(pictureFile(entry, noCover), size);
                if (picture.isNull() && *current == generation)
                    picture = loadScaled(noCover, size);
                // Queued to this object: the window gets it on its own thread.
                QMetaObject::invokeMethod(
                    this,
                    [this, ticket, generation, box, entry, picture] {
                        deliver(ticket, generation, box, entry, picture);
                    },
                    Qt::QueuedConnection);
            });
    }
}

void VisPictures::deliver(int ticket, int generation, int box, const QString &entry,
                          const QImage &picture)
{
    if (m_pending > 0 && generation == *m_generation)
        --m_pending;
    if (!picture.isNull())
        m_cache.insert(entry, new QImage(picture), std::max<qsizetype>(1, picture.sizeInBytes()));
    if (generation == *m_generation)
        emit pictureReady(ticket, box, picture);
}

void VisPictures::cancel()
{
    ++*m_generation;
    m_pending = 0;
    m_pool.clear();
}
