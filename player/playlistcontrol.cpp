#include "playlistcontrol.h"

#include "mediatype.h"
#include "skin/skinsurface.h"

#include "platform/dialogs.h"

#include <QKeyEvent>
#include <QListWidget>
#include <QMimeData>
#include <QUrl>

namespace {

// "*FAR" lacks its dot on purpose: it also catches names that merely end in FAR.
const QString kMediaFilter = QStringLiteral(
    "MPEG Audio Files|*.MP?"
    "|ActiveMovie Files|*.MP?;*.MPEG;*.DAT;*.WAV;*.AU;*.MID;*.RMI;*.AIF?;*.MOV;*.QT;*.AVI;*.M1V;"
    "*.RA;*.RAM;*.RM;*.RMM"
    "|Music Modules|*.MOD;*.MTM;*FAR;*.669;*.OKT;*.STM;*.S3M;*.NST;*.WOW;*.XM"
    "|Bitmaps|*.BMP;*.GIF;*.JPG|Playlists|*.M3U;*.PLS|All Files|*.*");

} // namespace

PlaylistControl::PlaylistControl(PlaylistState &state, Options options, SkinSurface &skin,
                                 Dialogs &dialogs, QObject *parent)
    : QObject(parent), m_state(state), m_options(options), m_skin(skin), m_dialogs(dialogs),
      m_scan(state), m_playlist(state)
{
    m_playlist.scanner = &m_scan;
    connect(&m_scan, &FolderScan::progress, this, &PlaylistControl::scanStep);
    connect(&m_scan, &FolderScan::finished, this, [this] {
        emit scanProgress(-1);
        runQueued();
    });
}

Playlist &PlaylistControl::playlist()
{
    // The preferences may have changed since the last command.
    m_playlist.friendlyNames = m_options.FriendlyNames > 0;
    m_playlist.validExt = m_options.ValidExt;
    return m_playlist;
}

void PlaylistControl::rememberPath(const QString &folder)
{
    m_options.Path = folder;
    emit pathChosen(folder);
}

void PlaylistControl::PlMoveEntry(int direction)
{
    if (m_options.CDMode)
        return;
    const int from = selectedIndex();
    const int to = m_playlist.PlMoveEntry(direction, from);
    if (to == from)
        return;
    if (!m_list || m_list->count() != m_state.PlNames.size()) {
        refresh(to);
        return;
    }
    m_list->item(from)->setText(m_state.PlNames[from]);
    m_list->item(to)->setText(m_state.PlNames[to]);
    m_list->setCurrentRow(to);
    // The texts swapped places; the mark goes with the entry playing.
    if (m_marked.row() == from || m_marked.row() == to)
        markPlaying(m_marked.row() == from ? to : from);
}

void PlaylistControl::PlClear()
{
    cancelScan();
    m_playlist.PlClear();
    m_markWanted = false;
    emit cleared();
    refresh(-1);
}

void PlaylistControl::PlLoad()
{
    int filterIndex = 0;
    const QString file = m_dialogs.openFile(
        QStringLiteral("Load Playlist"), m_options.Path,
        QStringLiteral("Playlists|*.M3U;*.M3U8;*.PLS|All Files|*.*"), filterIndex);
    if (file.isEmpty())
        return;
    rememberPath(Playlist::folderOf(file));
    loadList(file);
}

void PlaylistControl::loadList(const QString &file, std::function<void(int, int)> loaded)
{
    // Read before clearing: a file that is no list leaves the list alone.
    Playlist::ListFile list = Playlist::readListFile(file);
    if (!list.ok) {
        if (!list.message.isEmpty())
            m_dialogs.message(list.message);
        return;
    }
    if (m_options.CDMode)
        emit mediaFilesWanted();
    if (m_options.ClearPLFirst == 1)
        PlClear();
    enqueue([this, list = std::move(list), loaded = std::move(loaded)] {
        const int before = int(m_state.PlPath.size());
        playlist().PlRead(list);
        // With no current entry the player would start from the last one.
        if (m_state.CurTrack == 0 && !m_state.PlPath.isEmpty())
            m_state.CurTrack = 1;
        ShowPlaylist();
        if (loaded)
            loaded(before, int(m_state.PlPath.size()) - before);
        if (m_options.AutoPlay == 1)
            emit playRequested();
    });
}

void PlaylistControl::PlSaveAs()
{
    QString file = m_dialogs.saveFile(QStringLiteral("Save Playlist"), m_options.Path,
                                      QStringLiteral("MP3 Playlists (*.M3U)|*.M3U"));
    if (file.isEmpty())
        return;
    rememberPath(Playlist::folderOf(file));
    // Only a list named so loads again.
    if (Playlist::typeOf(file) != Playlist::ListType::M3u)
        file += QStringLiteral(".m3u");
    const QString message = playlist().WritePL(file);
    if (!message.isEmpty()) {
        m_dialogs.message(message);
        return;
    }
    m_state.title = Playlist::FriendlyName(file, m_playlist.friendlyNames);
    labelsChanged();
}

void PlaylistControl::OpenMedia()
{
    const QString file = m_dialogs.openFile(QStringLiteral("Open Media file"), m_options.Path,
                                            kMediaFilter, m_filterIndex);
    if (file.isEmpty())
        return;
    rememberPath(Playlist::folderOf(file));
    addPaths({file});
}

void PlaylistControl::AddFromDir()
{
    QString folder = m_dialogs.selectFolder(
        QStringLiteral("Select Directory containing Media Files:"), m_options.Path);
    if (folder.isEmpty())
        return;
    if (!folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    rememberPath(folder);
    addPaths({folder});
}

int PlaylistControl::selectedIndex() const
{
    if (!m_list)
        return -1;
    const QListWidgetItem *item = m_list->currentItem();
    if (!item || !item->isSelected() || m_list->currentRow() >= m_state.PlPath.size())
        return -1;
    return m_list->currentRow();
}

void PlaylistControl::RemoveEntry()
{
    const int index = selectedIndex();
    if (index < 0)
        return;
    m_playlist.RemoveEntry(index);
    if (m_list && m_list->count() == m_state.PlNames.size() + 1) {
        delete m_list->takeItem(index);
        m_list->setCurrentRow(qMin(index, m_list->count() - 1));
        labelsChanged();
    } else {
        refresh(index);
    }
}

void PlaylistControl::PlaySelected()
{
    const int index = selectedIndex();
    if (index >= 0)
        play(index);
}

void PlaylistControl::play(int index)
{
    m_state.CurTrack = index + 1;
    emit playRequested();
}

void PlaylistControl::itemDoubleClicked(QListWidgetItem *item)
{
    const int row = m_list ? m_list->row(item) : -1;
    if (row >= 0 && row < m_state.PlPath.size())
        play(row);
}

void PlaylistControl::addPaths(const QStringList &paths)
{
    for (const QString &path : paths)
        enqueue([this, path] { add(path); });
}

void PlaylistControl::addOpened(const QString &path)
{
    enqueue([this, path] {
        const qsizetype before = m_state.PlPath.size();
        add(path);
        // Queued behind the scan a folder starts, so it counts what the scan found.
        enqueue([this, before] {
            // With none, the player would start from the last entry, not
            // from what was just opened.
            if (m_state.CurTrack == 0 && m_state.PlPath.size() > before)
                m_state.CurTrack = int(before) + 1;
            appendNewNames();
        });
    });
}

void PlaylistControl::add(const QString &path)
{
    if (classifyMedia(path, QString()).kind == MediaType::Kind::DiscImage) {
        emit discImageOpened(path);
        return;
    }
    if (m_options.CDMode)
        emit mediaFilesWanted();
    Playlist &list = playlist();
    const QString message =
        list.AddToPlaylist(path, Playlist::FriendlyName(path, list.friendlyNames));
    appendNewNames();
    if (!message.isEmpty())
        m_dialogs.message(message);
}

void PlaylistControl::enqueue(std::function<void()> work)
{
    m_waiting.push_back(std::move(work));
    runQueued();
}

void PlaylistControl::runQueued()
{
    while (!m_scan.isRunning() && !m_waiting.empty()) {
        const std::function<void()> work = std::move(m_waiting.front());
        m_waiting.pop_front();
        work();
    }
}

void PlaylistControl::cancelScan()
{
    m_waiting.clear();
    m_scan.cancel();
}

void PlaylistControl::setList(QListWidget *list)
{
    if (m_list == list)
        return;
    if (m_list) {
        m_list->removeEventFilter(this);
        disconnect(m_list, nullptr, this, nullptr);
    }
    m_list = list;
    m_marked = QPersistentModelIndex();
    if (!list)
        return;
    restoreMark();
    list->installEventFilter(this);
    connect(list, &QListWidget::itemDoubleClicked, this, &PlaylistControl::itemDoubleClicked);
}

void PlaylistControl::ShowPlaylist()
{
    refresh(m_state.CurTrack - 1);
}

void PlaylistControl::refresh(int selectRow)
{
    if (m_list) {
        if (m_list->count() == m_state.PlNames.size()) {
            // Mostly one name changed (a file found missing): rebuilding
            // 30,000 rows for it would stall playback.
            for (int row = 0; row < m_list->count(); ++row) {
                if (QListWidgetItem *item = m_list->item(row); item->text() != m_state.PlNames[row])
                    item->setText(m_state.PlNames[row]);
            }
        } else {
            m_list->clear();
            m_list->addItems(m_state.PlNames);
        }
        if (selectRow >= 0 && selectRow < m_list->count())
            m_list->setCurrentRow(selectRow);
        restoreMark();
    }
    labelsChanged();
}

void PlaylistControl::labelsChanged()
{
    m_skin.setLabel(kNameLabel, m_state.title);
    m_skin.setLabel(kCountLabel, QString::number(m_state.PlNames.size()));
    if (m_state.file != m_shownFile) {
        m_shownFile = m_state.file;
        if (!m_shownFile.isEmpty())
            emit listFileShown(m_shownFile);
    }
}

void PlaylistControl::markPlaying(int row)
{
    m_markWanted = row >= 0;
    if (!m_list)
        return;
    QAbstractItemModel *model = m_list->model();
    if (m_marked.isValid())
        model->setData(m_marked, QVariant(), Qt::FontRole);
    // A persistent index follows its entry when rows above it go.
    m_marked = model->index(row, 0);
    if (m_marked.isValid()) {
        // Only the weight: the mark keeps the skin's font.
        QFont bold;
        bold.setBold(true);
        model->setData(m_marked, bold, Qt::FontRole);
    }
}

// After the list was rebuilt, or caught up with a scan, the current entry
// gets its mark back.
void PlaylistControl::restoreMark()
{
    if (m_markWanted && !m_marked.isValid())
        markPlaying(m_state.CurTrack - 1);
}

void PlaylistControl::appendNewNames()
{
    if (m_list) {
        const int shown = m_list->count();
        if (shown > m_state.PlNames.size()) {
            refresh(m_state.CurTrack - 1);
            return;
        }
        m_list->addItems(m_state.PlNames.mid(shown));
        restoreMark();
        if (m_list->currentRow() < 0 && m_state.CurTrack >= 1 &&
            m_state.CurTrack <= m_list->count())
            m_list->setCurrentRow(m_state.CurTrack - 1);
    }
    labelsChanged();
}

void PlaylistControl::scanStep(int entries)
{
    appendNewNames();
    if (m_scan.isRunning())
        emit scanProgress(entries);
}

bool PlaylistControl::eventFilter(QObject *watched, QEvent *event)
{
    // The type first: a list being destroyed still sends events, and is no
    // longer a QListWidget to compare with.
    if (event->type() != QEvent::KeyPress || watched != m_list)
        return false;
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Delete:
        RemoveEntry();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        PlaySelected();
        return true;
    default:
        return false;
    }
}
