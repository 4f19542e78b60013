#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class FolderScan;

// The two parallel lists of the playlist and the current entry.
struct PlaylistState
{
    QStringList PlNames; // display names
    QStringList PlPath;  // full paths, same index; empty once found missing
    int CurTrack = 0;    // 1-based; 0 when nothing is chosen
    QString title = QStringLiteral("untitled");
    QString file; // the playlist file last read; its picture is the list's cover
};

// Reading and writing playlist files into a PlaylistState, and the edits the
// list keys and menus make to it.
class Playlist
{
public:
    // A 16-bit list index: the lists never grow past this.
    static constexpr int kMaxEntries = 32766;

    enum class ListType { None, M3u, Pls };

    explicit Playlist(PlaylistState &state) : m_state(state) {}

    // Larger files are garbage, not playlists: 32766 long paths fit well
    // below it, and reading it whole must not exhaust memory.
    static constexpr qint64 kMaxListBytes = 256 * 1024 * 1024;

    // A list file read before the list changes, so one that cannot be read
    // leaves the list as it was.
    struct ListFile
    {
        QString file;
        QByteArray bytes;
        bool ok = false;
        QString message; // what the user must see when not ok; empty for a missing file
    };
    static ListFile readListFile(const QString &file);

    void PlClear();
    // Reads an M3U or PLS file; entries past the limit are ignored. Returns
    // the message the user must see, empty when there is none.
    QString PlRead(const QString &file);
    void PlRead(const ListFile &list);
    // Writes the paths as M3U, relative below the list's folder. Returns the
    // message the user must see, empty on success.
    QString WritePL(const QString &file) const;
    // Swaps the entry at selectedIndex with its neighbour in direction (-1 or
    // +1) in both lists. Returns where the selection goes.
    int PlMoveEntry(int direction, int selectedIndex);
    void RemoveEntry(int index);
    // A dropped or chosen item: a folder is scanned, a playlist read, anything
    // else appended under the given display name. Returns the message of a
    // playlist that could not be read.
    QString AddToPlaylist(const QString &path, const QString &display);

    static QString FriendlyName(const QString &path, bool friendly);
    static bool IsPicture(const QString &path);
    // The name as the list shows it: " (picture)" added for a picture file.
    static QString markPicture(const QString &display, const QString &path);
    // The file's folder with its "/"; empty for a bare name.
    static QString folderOf(const QString &file);

    // The pure parts of PlRead, for tests and other readers.
    static ListType typeOf(const QString &file);

    // The entries of a list as written, at most `room` of them. Lines end at
    // LF, CR LF or a lone CR and are decoded one by one, so a list that tools
    // with different encodings appended to still reads right.
    static QStringList readEntries(const QByteArray &bytes, ListType type, int room = kMaxEntries);
    // The full path of an entry as written in the list (with its original
    // separators), for a list whose folder is base (with a trailing "/").
    static QString resolveEntry(const QString &written, const QString &base);

    bool friendlyNames = true;
    // Extensions the folder scan accepts (the "ValidExt" setting).
    QString validExt = QStringLiteral("mp2 mp3 mpa wma asf wav mid rmi avi mov qt");
    // When set, folders are scanned by it on the event loop; otherwise
    // AddToPlaylist scans them before it returns.
    FolderScan *scanner = nullptr;

private:
    void append(const QString &display, const QString &path);

    PlaylistState &m_state;
};
