#pragma once

#include "albumcover.h"
#include "lyricsdisplay.h"

#include <QObject>
#include <QPointer>

#include <optional>

class Dialogs;
class QWidget;
class SkinSurface;
class frmAlbum;
class frmInfo;
struct Mp3Info;
struct PlaylistState;

// What the window shows about the playing item besides its name and time:
// the MP3 frame information (labels 10 to 12, displays 4 and 5), the cover
// (the skin's cover area and the album window), the lyrics list, and the
// track information window.
class TrackInfo : public QObject
{
    Q_OBJECT
public:
    // The settings this part reads; they outlive it.
    struct Options
    {
        const qint16 &UseTagCover;
        const qint16 &AutoCover;
        const qint16 &FriendlyNames;
        const QString &Path; // where the cover dialog starts without an item
    };
    struct Parts
    {
        SkinSurface &skin;
        Dialogs &dialogs;
        Options options;
        const PlaylistState &playlist;
        QString noCoverFile;
        QWidget *window; // parent of the secondary windows
    };

    explicit TrackInfo(Parts parts);
    ~TrackInfo() override;

    // What the engine reports, in the order an item meets it.
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

    // The item the engine plays now; empty when nothing is open. Until it is
    // set, the last item started counts.
    void setCurrentFile(const QString &file) { m_current = file; }

signals:
    // A double click on a timed lyric line: play from there.
    void seekWanted(qint64 positionMs);
    // Lyrics came or went: the lyrics light may change.
    void lyricsChanged();
    // The info window wrote a tag into this file.
    void tagSaved(const QString &file);

private:
    void showCover(const QImage &picture, const QString &hint);
    frmAlbum &album();
    QString current() const;
    QString infoFile() const;

    Parts m_parts;
    AlbumCover m_cover;
    LyricsDisplay m_lyrics;
    QString m_started;
    std::optional<QString> m_current;
    QPointer<frmInfo> m_info;
    QPointer<frmAlbum> m_album;
};
