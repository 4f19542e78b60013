#pragma once

#include "app/lyricsdisplay.h"
#include "player/albumcover.h"

#include <QObject>
#include <QPointer>

#include <functional>

class Dialogs;
class QWidget;
class SkinLoader;
class frmAlbum;
class frmInfo;
struct Mp3Info;
struct PlaylistState;
struct Settings;

// What the window shows about the playing item besides its name and time:
// the MP3 frame information (labels 10 to 12, displays 4 and 5), the cover
// (the skin's cover area and the album window), the lyrics list, and the
// track information window.
class TrackInfo : public QObject
{
    Q_OBJECT
public:
    struct Parts
    {
        SkinLoader &skin;
        Dialogs &dialogs;
        const Settings &settings;
        const PlaylistState &playlist;
        QString noCoverFile;
        QWidget *window; // parent of the secondary windows
    };

    explicit TrackInfo(Parts parts);
    ~TrackInfo() override;

    // The engine's hooks, in the order an item meets them.
    void ShowMp3Info(const Mp3Info &info);
    // The tag rules for the media file, then the pictures in it and beside it.
    void LoadTagCover(const QString &mediaFile, const QString &album, const QString &artist);
    void LoadCover(const QString &file);
    // The item is open: its lyrics, and for other files than MP3 its cover.
    void TrackStarted(const QString &file);
    // A playback tick at this position.
    void Tick(qint64 positionMs);

    void ShowTrackInfo(); // command 3
    void ShowAux16();     // command 16: the album window
    void iCover_DblClick();

    AlbumCover &cover() { return m_cover; }
    const AlbumCover &cover() const { return m_cover; }
    LyricsDisplay &lyrics() { return m_lyrics; }
    bool lyricsLoaded() const { return m_lyrics.LyricsLoaded(); }
    // Null until first shown.
    frmInfo *infoWindow() const;
    frmAlbum *albumWindow() const;

    // The main window's current item; the last item started when unset.
    std::function<QString()> currentFile;
    // Seeks the playing item (PlayFrom); the lyrics list's double click uses it.
    std::function<void(qint64 positionMs)> seek;
    // The lyrics light may have changed.
    std::function<void()> lightsChanged;
    // The info window wrote a tag into this file.
    std::function<void(const QString &file)> tagSaved;

private:
    void showCover(const QImage &picture, const QString &hint);
    frmAlbum &album();
    QString current() const;
    QString infoFile() const;

    Parts m_parts;
    AlbumCover m_cover;
    LyricsDisplay m_lyrics;
    QString m_started;
    QPointer<frmInfo> m_info;
    QPointer<frmAlbum> m_album;
};
