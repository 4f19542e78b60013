#include "trackinfo.h"

#include "frmalbum.h"
#include "frminfo.h"
#include "lyrics.h"
#include "mp3info.h"
#include "playlist.h"

#include "platform/dialogs.h"
#include "skin/skinareawidget.h"
#include "skin/skinlistarea.h"
#include "skin/skinsurface.h"

#include <QFileInfo>

TrackInfo::TrackInfo(Parts parts)
    : m_parts(std::move(parts)), m_cover(m_parts.noCoverFile), m_lyrics(*m_parts.skin.list(4))
{
    m_cover.show = [this](const QImage &picture, const QString &hint) { showCover(picture, hint); };
    connect(m_parts.skin.area(1), &SkinAreaWidget::doubleClicked, this,
            [this] { iCover_DblClick(); });
    connect(m_parts.skin.list(4), &QListWidget::itemDoubleClicked, this,
            [this](QListWidgetItem *item) {
                const qint64 to = m_lyrics.Lyrics_DblClick(m_parts.skin.list(4)->row(item));
                if (to >= 0)
                    emit seekWanted(to);
            });
}

TrackInfo::~TrackInfo()
{
    delete m_info;
    delete m_album;
}

frmInfo *TrackInfo::infoWindow() const
{
    return m_info;
}

frmAlbum *TrackInfo::albumWindow() const
{
    return m_album;
}

void TrackInfo::ShowMp3Info(const Mp3Info &info)
{
    if (!info.examined)
        return; // a file too short to read keeps the last texts
    m_parts.skin.setLabel(10, info.bitRate);
    m_parts.skin.setLabel(11, info.sampleRate);
    m_parts.skin.setLabel(12, info.mode);
    m_parts.skin.SetDD(4, info.bitRateNumber);
    m_parts.skin.SetDD(5, info.sampleRateNumber);
}

void TrackInfo::LoadTagCover(const QString &mediaFile, const QString &album, const QString &artist)
{
    m_cover.friendlyNames = m_parts.options.FriendlyNames > 0;
    m_cover.LoadTagCover(QFileInfo(mediaFile).path(), album, artist, mediaFile);
}

void TrackInfo::LoadCover(const QString &file)
{
    m_cover.friendlyNames = m_parts.options.FriendlyNames > 0;
    m_cover.LoadCover(file);
}

void TrackInfo::TrackStarted(const QString &file)
{
    m_started = file;
    // With the tag rules on, MP3s had their turn before opening; other files
    // can still carry a picture or have one beside them. A picture inside the
    // item counts whatever the rules say.
    if (m_parts.options.UseTagCover != 1)
        m_cover.TrackCover(file);
    else if (!isMpegAudio(file))
        LoadTagCover(file, QString(), QString());
    m_lyrics.LoadLyrics(lyricsFileFor(file));
    emit lyricsChanged();
}

void TrackInfo::Tick(qint64 positionMs)
{
    m_lyrics.ShowLyrics(positionMs);
}

void TrackInfo::showCover(const QImage &picture, const QString &hint)
{
    SkinAreaWidget *area = m_parts.skin.area(1);
    area->setPicture(picture);
    area->setToolTip(hint);
    const bool autoShow = !picture.isNull() && m_parts.options.AutoCover == 1 &&
                          area->isVisibleTo(area->parentWidget());
    // An album window the user opened follows the cover too.
    if (autoShow || m_album)
        album().setPicture(picture, hint);
    if (autoShow)
        m_album->show();
}

frmAlbum &TrackInfo::album()
{
    if (!m_album) {
        m_album = new frmAlbum(m_parts.window);
        connect(m_album, &frmAlbum::pictureDoubleClicked, this, [this](const QImage &picture) {
            if (m_info)
                m_info->setPicture(picture);
        });
    }
    return *m_album;
}

void TrackInfo::ShowAux16()
{
    frmAlbum &window = album();
    window.setPicture(m_cover.picture(), m_parts.skin.area(1)->toolTip());
    window.show();
    window.raise();
    window.activateWindow();
}

void TrackInfo::iCover_DblClick()
{
    const QString file = current();
    const QString folder = file.isEmpty() ? m_parts.options.Path : QFileInfo(file).path();
    int filterIndex = 0;
    const QString chosen = m_parts.dialogs.openFile(
        QStringLiteral("Select Cover"), folder,
        QStringLiteral("Pictures|*.BMP;*.GIF;*.JPG;*.JPEG;*.PNG|All Files|*.*"), filterIndex);
    if (!chosen.isEmpty())
        LoadCover(chosen);
}

// The playing item; with nothing played yet, the entry selected in the
// playlist, else the current entry.
QString TrackInfo::current() const
{
    return m_current ? *m_current : m_started;
}

QString TrackInfo::infoFile() const
{
    if (const QString file = current(); !file.isEmpty())
        return file;
    const QStringList &paths = m_parts.playlist.PlPath;
    int index = -1;
    if (const SkinListArea *list = m_parts.skin.list(1))
        index = list->currentRow();
    if (index < 0 || index >= paths.size())
        index = m_parts.playlist.CurTrack - 1;
    return index >= 0 && index < paths.size() ? paths[index] : QString();
}

void TrackInfo::ShowTrackInfo()
{
    if (!m_info) {
        frmInfo::Source source;
        source.currentFile = [this] { return current(); };
        source.currentCover = [this] { return m_cover.picture(); };
        source.friendlyNames = [this] { return m_parts.options.FriendlyNames > 0; };
        source.tagSaved = [this](const QString &file) { emit tagSaved(file); };
        m_info = new frmInfo(m_parts.dialogs, std::move(source), m_parts.window);
    }
    m_info->GetInfo(infoFile());
    m_info->show();
    m_info->raise();
    m_info->activateWindow();
}
