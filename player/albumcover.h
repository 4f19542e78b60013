#pragma once

#include <QImage>
#include <QString>

#include <functional>

// The picture of the playing item and where it came from: a picture named
// after the tag's album and artist, one inside the media file or beside it,
// the playlist's picture, a picture the user chose, else the default one.
// It shows pictures through `show` and knows no widget.
class AlbumCover
{
public:
    explicit AlbumCover(QString noCoverFile = {}) : m_noCover(std::move(noCoverFile)) {}

    // The first of base.BMP, base.GIF, base.JPG that exists (base trimmed),
    // whatever the letter case on disk; empty when there is none.
    static QString FindCover(const QString &base);
    // The tag's candidates: folder/album, folder/artist-album, folder/artist -
    // album; the last one that exists wins. Empty when none does.
    static QString tagCover(const QString &folder, const QString &album, const QString &artist);
    // cover.* or folder.* (jpg, jpeg, png, bmp, gif) in the folder, any case.
    static QString besideCover(const QString &folder);
    // The picture of a picture file, or the one embedded in a media file;
    // null when there is neither or it cannot be decoded.
    static QImage loadPicture(const QString &path);

    // Shows a picture file, or the picture FindCover finds for a name without
    // an extension. The picture already shown is not read again. A missing,
    // unreadable or corrupt file clears the picture.
    void LoadCover(const QString &path);
    // The tag rules, then the playlist's picture; when no picture file
    // applies, the picture inside mediaFile or a cover or folder picture beside
    // it; then the default picture.
    void LoadTagCover(const QString &folder, const QString &album, const QString &artist,
                      const QString &mediaFile = {});
    // An item started with the tag rules off: the playlist's picture, else
    // the item's own picture (inside it or beside it). The picture of the last
    // item gives way to the default one; a picture the user chose stays.
    void TrackCover(const QString &mediaFile);
    // A playlist was read: a picture named like it becomes its picture, and shows.
    void PlaylistLoaded(const QString &playlistFile);
    // The playlist was cleared: no picture, and no playlist picture to fall back on.
    void PlaylistCleared();

    QString CoverFile;     // the picture shown; empty when none
    QString PlaylistCover; // the current playlist's picture
    bool friendlyNames = true;
    // Receives each picture to show with its hint; a null picture clears.
    std::function<void(const QImage &picture, const QString &hint)> show;
    QImage picture() const { return m_picture; }

private:
    void display(const QString &file, const QImage &picture);
    bool showOwnPicture(const QString &mediaFile);

    QString m_noCover;
    QImage m_picture;
    bool m_ownPicture = false; // the picture shown is an item's own
};
