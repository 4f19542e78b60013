#pragma once

#include <QString>
#include <QStringList>

// The two parallel lists of the playlist and the current entry.
struct PlaylistState
{
    QStringList PlNames; // display names
    QStringList PlPath;  // full paths, same index; empty once found missing
    int CurTrack = 0;    // 1-based; 0 when nothing is chosen
    QString title = QStringLiteral("untitled");
};

// Reading and writing playlist files into a PlaylistState.
class Playlist
{
public:
    static constexpr int kMaxEntries = 32766;

    explicit Playlist(PlaylistState &state) : m_state(state) {}

    void PlClear();
    // Reads an M3U or PLS file; entries past the limit are ignored.
    void PlRead(const QString &file);
    // Writes the paths as M3U, relative below the list's folder. Returns the
    // message the user must see, empty on success.
    QString WritePL(const QString &file) const;
    // Adds a playlist, a media file or (once folder scans land) a folder.
    void AddOpened(const QString &path);

    static QString FriendlyName(const QString &path, bool friendly);
    static bool IsPicture(const QString &path);

    bool friendlyNames = true;

private:
    void append(const QString &display, const QString &path);

    PlaylistState &m_state;
};
