#include "folderscan.h"

#include "mediatype.h"

#include <QDir>
#include <QFileInfo>

namespace {

// Work per turn of the event loop; well below what a user notices.
constexpr qint64 kSliceMs = 20;
constexpr qint64 kProgressMs = 100;

} // namespace

FolderWalk::FolderWalk(const QString &validExt, bool friendlyNames)
    : m_validExt(validExt.toUpper()), m_friendly(friendlyNames)
{
}

void FolderWalk::add(const QString &folder)
{
    if (folder.isEmpty())
        return;
    const QString canonical = QFileInfo(folder).canonicalFilePath();
    if (canonical.isEmpty() || m_visited.contains(canonical))
        return;
    m_visited.insert(canonical);
    m_folders << (folder.endsWith(QLatin1Char('/')) ? folder : folder + QLatin1Char('/'));
}

bool FolderWalk::accepts(const QString &fileName, const QString &validExtUpper)
{
    const QString ext = mediaExtension(fileName);
    // An empty extension ("name.") is found in any list, as a substring test
    // finds the empty text.
    return ext.isEmpty() || validExtUpper.contains(ext);
}

bool FolderWalk::step(PlaylistState &state)
{
    if (state.PlPath.size() >= Playlist::kMaxEntries)
        return false;
    if (m_fileIndex < m_files.size()) {
        const QString &name = m_files[m_fileIndex++];
        if (accepts(name, m_validExt)) {
            const int dot = name.lastIndexOf(QLatin1Char('.'));
            state.PlNames << Playlist::FriendlyName(dot < 0 ? name : name.left(dot), m_friendly);
            state.PlPath << m_current + name;
        }
        return true;
    }
    if (!m_current.isEmpty()) {
        queueSubfolders(m_current);
        m_current.clear();
        m_files.clear();
    }
    if (m_next >= m_folders.size())
        return false;
    m_current = m_folders[m_next++];
    m_files = QDir(m_current).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase);
    m_fileIndex = 0;
    return true;
}

void FolderWalk::queueSubfolders(const QString &folder)
{
    const QStringList names =
        QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
    for (const QString &name : names) {
        const QFileInfo info(folder + name);
        // A folder we may not list would only yield nothing.
        if (info.isReadable() && info.isExecutable())
            add(folder + name);
    }
}

FolderScan::FolderScan(PlaylistState &state, QObject *parent) : QObject(parent), m_state(state)
{
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &FolderScan::slice);
}

FolderScan::~FolderScan()
{
    delete m_walk;
}

void FolderScan::start(const QString &folder, const QString &validExt, bool friendlyNames)
{
    if (!m_walk) {
        m_walk = new FolderWalk(validExt, friendlyNames);
        m_sinceProgress.start();
        m_timer.start();
    }
    m_walk->add(folder);
}

void FolderScan::cancel()
{
    if (m_walk)
        stop();
}

bool FolderScan::isRunning() const
{
    return m_walk != nullptr;
}

void FolderScan::slice()
{
    if (!m_walk)
        return;
    QElapsedTimer spent;
    spent.start();
    bool more = true;
    while (more && spent.elapsed() < kSliceMs)
        more = m_walk->step(m_state);
    if (!more) {
        stop();
        return;
    }
    if (m_sinceProgress.elapsed() >= kProgressMs) {
        m_sinceProgress.restart();
        emit progress(int(m_state.PlPath.size()));
    }
}

void FolderScan::stop()
{
    m_timer.stop();
    delete m_walk;
    m_walk = nullptr;
    emit progress(int(m_state.PlPath.size()));
    emit finished();
}

int FolderScan::scanAll(PlaylistState &state, const QString &folder, const QString &validExt,
                        bool friendlyNames)
{
    const qsizetype before = state.PlPath.size();
    FolderWalk walk(validExt, friendlyNames);
    walk.add(folder);
    while (walk.step(state)) {
    }
    return int(state.PlPath.size() - before);
}
