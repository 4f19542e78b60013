#pragma once

#include "folderscan.h"
#include "playlist.h"

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

#include <deque>
#include <functional>

class Dialogs;
class QListWidget;
class SkinSurface;
class QListWidgetItem;

// The playlist as the user edits it: the dialogs, moves, removals, drops and
// folder scans, and the list on the skin that shows it.
class PlaylistControl : public QObject
{
    Q_OBJECT
public:
    // The settings this part reads, owned by the window. Path is written
    // after every dialog the user confirms.
    struct Options
    {
        QString &Path;
        const qint16 &ClearPLFirst;
        const qint16 &AutoPlay;
        const qint16 &FriendlyNames;
        const QString &ValidExt;
        const bool &CDMode; // the entries are a disc's tracks
    };

    // The playlist's name and count, as the shipped skins lay them out.
    static constexpr int kNameLabel = 8;
    static constexpr int kCountLabel = 13;

    PlaylistControl(PlaylistState &state, Options options, SkinSurface &skin, Dialogs &dialogs,
                    QObject *parent = nullptr);

    void PlMoveEntry(int direction); // not in CD mode
    void PlClear();
    void PlLoad();
    // PlLoad without its dialog. Once the list is read, loaded gets the index
    // of its first entry in the playlist and the number of its entries.
    void loadList(const QString &file, std::function<void(int first, int count)> loaded = {});
    void PlSaveAs();
    // Opens media files and adds them (AddOpened).
    void OpenMedia();
    void AddFromDir();
    // -1 when nothing is selected.
    int selectedIndex() const;

    void RemoveEntry();
    // The selected entry becomes the current one and plays.
    void PlaySelected();
    // Files, folders and playlists, added in the order given: a folder is
    // scanned to its end before what follows it is added.
    void addPaths(const QStringList &paths);
    // What the command line or the start settings open, added like a drop;
    // with no current entry, the first one it brings becomes current.
    void addOpened(const QString &path);
    // Runs work once the folder scans already asked for have ended.
    void afterScans(std::function<void()> work) { enqueue(std::move(work)); }

    // The list that shows the names; its keys and double clicks arrive here.
    // It may be null (a skin without a playlist).
    void setList(QListWidget *list);
    // Fills the list from the names, selects the current entry and shows the
    // playlist's name and count.
    void ShowPlaylist();
    // The entry at row stands out as the one playing, apart from the
    // selection the user moves and acts on.
    void markPlaying(int row);

    bool isScanning() const { return m_scan.isRunning(); }
    // Stops a folder scan and forgets what waited for it; entries found stay.
    void cancelScan();

signals:
    // The current entry should play (a double click, Return, AutoPlay).
    void playRequested();
    // A list read from a file other than the one shown before: its picture
    // becomes the cover.
    void listFileShown(const QString &file);
    // Entries so far while a folder is scanned; -1 once the scan ends.
    void scanProgress(int entries);
    void cleared();
    // A dialog the user confirmed chose this folder: the new "Path", to be
    // stored at once.
    void pathChosen(const QString &path);
    // A disc image (a .cue) was opened or dropped: it plays as a CD, not as
    // an entry of the list.
    void discImageOpened(const QString &cueSheet);
    // Files come while the list holds a disc's tracks: back to the media
    // files first, so they join those.
    void mediaFilesWanted();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Playlist &playlist();
    void rememberPath(const QString &folder);
    void restoreMark();
    void labelsChanged();
    void add(const QString &path);
    void enqueue(std::function<void()> work);
    void runQueued();
    void refresh(int selectRow);
    void appendNewNames();
    void scanStep(int entries);
    void play(int index);
    void itemDoubleClicked(QListWidgetItem *item);

    PlaylistState &m_state;
    Options m_options;
    SkinSurface &m_skin;
    Dialogs &m_dialogs;
    FolderScan m_scan;
    Playlist m_playlist;
    QPointer<QListWidget> m_list;
    QPersistentModelIndex m_marked;
    QString m_shownFile;
    bool m_markWanted = false;
    // Work that waits for a running folder scan, so drops keep their order.
    std::deque<std::function<void()>> m_waiting;
    int m_filterIndex = 0;
};
