#include "albumcover.h"

#include "embeddedcover.h"
#include "platform/findfile.h"
#include "platform/readfile.h"
#include "playlist.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace {

QString withSlash(const QString &folder)
{
    return folder.isEmpty() || folder.endsWith(QLatin1Char('/')) ? folder
                                                                 : folder + QLatin1Char('/');
}

} // namespace

QString AlbumCover::FindCover(const QString &base)
{
    const QString trimmed = base.trimmed();
    const qsizetype slash = trimmed.lastIndexOf(QLatin1Char('/'));
    const QString name = trimmed.mid(slash + 1);
    if (name.isEmpty())
        return {};
    const QString folder = slash < 0 ? QString() : trimmed.left(qMax<qsizetype>(slash, 1));
    return firstExistingNoCase(folder,
                               {name + QStringLiteral(".BMP"), name + QStringLiteral(".GIF"),
                                name + QStringLiteral(".JPG")});
}

QString AlbumCover::tagCover(const QString &folder, const QString &album, const QString &artist)
{
    // Most taggers pad the fields with NULs, which no file name holds.
    auto text = [](const QString &field) { return field.section(QChar(0), 0, 0).trimmed(); };
    const QString dir = withSlash(folder);
    const QString al = text(album);
    const QString ar = text(artist);
    QStringList candidates;
    if (!al.isEmpty())
        candidates << dir + al;
    if (!al.isEmpty() && !ar.isEmpty())
        candidates << dir + ar + QLatin1Char('-') + al << dir + ar + QStringLiteral(" - ") + al;
    QString found;
    for (const QString &c : candidates) {
        const QString file = FindCover(c);
        if (!file.isEmpty())
            found = file;
    }
    return found;
}

QString AlbumCover::besideCover(const QString &folder)
{
    if (folder.isEmpty())
        return {};
    QStringList names;
    for (const char *base : {"cover", "folder"}) {
        for (const char *ext : {".jpg", ".jpeg", ".png", ".bmp", ".gif"})
            names << QLatin1String(base) + QLatin1String(ext);
    }
    return firstExistingNoCase(folder, names);
}

QImage AlbumCover::loadPicture(const QString &path)
{
    // Any size opens: a media file holds its picture in a tag.
    QFile in;
    if (openRegularFile(in, path, QIODevice::ReadOnly) != FileFault::None)
        return {};
    // Media files first: some image readers guess boldly from a few bytes.
    const EmbeddedPicture pic = readEmbeddedPicture(in);
    if (!pic.data.isEmpty())
        return QImage::fromData(pic.data);
    if (in.size() > kMaxPictureFileBytes || !in.seek(0))
        return {};
    QImageReader reader(&in);
    reader.setDecideFormatFromContent(true);
    return reader.read();
}

void AlbumCover::LoadCover(const QString &path)
{
    if (path == CoverFile)
        return;
    QString file = path;
    // Only the name decides: folders on Linux often have dots in them.
    if (!file.isEmpty() && !QFileInfo(file).fileName().contains(QLatin1Char('.')))
        file = FindCover(file);
    if (file == CoverFile && !file.isEmpty())
        return;
    display(file, loadPicture(file));
}

void AlbumCover::LoadTagCover(const QString &folder, const QString &album, const QString &artist,
                              const QString &mediaFile)
{
    const QString found = tagCover(folder, album, artist);
    if (!found.isEmpty())
        return LoadCover(found);
    if (!PlaylistCover.isEmpty())
        return LoadCover(PlaylistCover);
    if (showOwnPicture(mediaFile))
        return;
    LoadCover(firstExistingNoCase(m_noCover.section(QLatin1Char('/'), 0, -2),
                                  {m_noCover.section(QLatin1Char('/'), -1)}));
}

void AlbumCover::TrackCover(const QString &mediaFile)
{
    if (!PlaylistCover.isEmpty())
        return LoadCover(PlaylistCover);
    if (showOwnPicture(mediaFile))
        return;
    // The last item's own picture is not this one's; a picture the user chose stays.
    if (m_ownPicture)
        LoadCover(firstExistingNoCase(m_noCover.section(QLatin1Char('/'), 0, -2),
                                      {m_noCover.section(QLatin1Char('/'), -1)}));
}

bool AlbumCover::showOwnPicture(const QString &mediaFile)
{
    if (mediaFile.isEmpty())
        return false;
    if (mediaFile == CoverFile)
        return true;
    const QImage embedded = loadPicture(mediaFile);
    if (!embedded.isNull()) {
        display(mediaFile, embedded);
        m_ownPicture = true;
        return true;
    }
    const QString beside = besideCover(QFileInfo(mediaFile).path());
    if (beside.isEmpty())
        return false;
    LoadCover(beside);
    m_ownPicture = !CoverFile.isEmpty();
    return m_ownPicture;
}

void AlbumCover::PlaylistLoaded(const QString &playlistFile)
{
    const QFileInfo info(playlistFile);
    const QString name = info.fileName();
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    PlaylistCover = FindCover(info.path() + QLatin1Char('/') + (dot < 0 ? name : name.left(dot)));
    if (!PlaylistCover.isEmpty())
        LoadCover(PlaylistCover);
}

void AlbumCover::PlaylistCleared()
{
    PlaylistCover.clear();
    display(QString(), QImage());
}

void AlbumCover::display(const QString &file, const QImage &picture)
{
    m_ownPicture = false;
    m_picture = picture;
    CoverFile = picture.isNull() ? QString() : file;
    if (show)
        show(picture, picture.isNull() ? QString() : Playlist::FriendlyName(file, friendlyNames));
}
