#include "cdpart.h"

#include "cdplayerini.h"

#include "platform/dialogs.h"
#include "platform/readfile.h"
#include "skin/skinsurface.h"

#include <QtDebug>

namespace {

// The title file is a few kilobytes per disc; one far bigger is not one.
constexpr qint64 kMaxTitleFileBytes = 16 * 1024 * 1024;
// With no disc to read, the drive is looked at once a second, not on every beat.
constexpr int kBeatsBetweenChecks = 4;

} // namespace

CdPart::CdPart(PlaylistState &playlist, const PlaybackState &playback, Options options,
               Services services)
    : m_playlist(playlist), m_playback(playback), m_options(options), m_svc(std::move(services)),
      m_cddb(m_svc.http, {m_options.CDDBcmd, m_options.EmailID})
{
    connect(&m_cddb, &CddbClient::statusText, this, &CdPart::setStatus);
    connect(&m_cddb, &CddbClient::message, this,
            [this](const QString &text) { m_svc.dialogs.message(text); });
    connect(&m_cddb, &CddbClient::entryRead, this, &CdPart::entryRead);
}

CdPart::~CdPart() = default;

void CdPart::DoIt(qint16 cmd)
{
    if (cmd == 13)
        EjectIt();
    else if (cmd == 37)
        ToggleCDMode();
}

QString CdPart::source() const
{
    return m_image.isEmpty() ? m_options.CDDrive : m_image;
}

void CdPart::setStatus(const QString &text)
{
    m_status = text;
    m_svc.skin.setLabel(kStatusLabel, text);
}

void CdPart::showArtist(const QString &artist, const QString &album)
{
    if (artist.isEmpty() || album.isEmpty() || artist == album)
        m_artistLine = artist.isEmpty() ? album : artist;
    else
        m_artistLine = artist + QStringLiteral(" - ") + album;
    m_svc.skin.setLabel(kArtistLabel, m_artistLine);
}

void CdPart::skinLoaded()
{
    if (!m_cdMode)
        return;
    m_svc.skin.setLabel(kStatusLabel, m_status);
    m_svc.skin.setLabel(kArtistLabel, m_artistLine);
}

void CdPart::settingsChanged()
{
    // Another drive chosen: look at it on the next beat.
    if (m_cdMode && m_image.isEmpty() && m_disc.playSource != m_options.CDDrive) {
        CDMedia = -1;
        m_toldNoDrive = false;
        m_beats = 0;
    }
}

void CdPart::ending(bool)
{
    m_cddb.cancel();
}

void CdPart::clockTick(const QDateTime &)
{
    if (m_cdMode)
        CDStatus();
}

void CdPart::ToggleCDMode()
{
    if (m_cdMode)
        leaveCdMode();
    else
        enterCdMode();
}

void CdPart::enterCdMode()
{
    if (m_cdMode)
        return;
    m_cdMode = true;
    emit cdModeChanged(true);
    m_files = m_playlist;
    m_playlist = PlaylistState();
    m_playlist.title = QStringLiteral("Audio CD");
    m_table = CdTable();
    m_disc = CdDisc();
    CDMedia = -1;
    CDLastMode = 0;
    CDTrack = 0;
    CDTitlesLoaded = false;
    m_beats = 0;
    showArtist(QString(), QString());
    emit playlistChanged();
    CDStatus();
    if (m_image.isEmpty() && m_svc.drive.status(source()) == CdDrive::Status::NoDrive &&
        !m_toldNoDrive) {
        // Said once; the drive is still looked at, in case one is plugged in.
        m_toldNoDrive = true;
        m_svc.dialogs.message(
            QStringLiteral("No CD drive was found at %1.\rChoose the drive on the CD page of the "
                           "preferences, or open a disc image (a .cue file).")
                .arg(source()));
    }
}

void CdPart::leaveCdMode()
{
    if (!m_cdMode)
        return;
    m_cddb.cancel();
    m_cdMode = false;
    emit cdModeChanged(false);
    m_playlist = m_files;
    m_files = PlaylistState();
    CDMedia = -1;
    m_status.clear();
    m_svc.skin.setLabel(kStatusLabel, QString());
    showArtist(QString(), QString());
    emit playlistChanged();
}

void CdPart::OpenImage(const QString &cueSheet)
{
    const CdDisc disc = m_svc.drive.read(cueSheet);
    if (!disc.ok()) {
        m_svc.dialogs.message(
            QStringLiteral("The disc image cannot be played:\r%1\r%2").arg(cueSheet, disc.problem));
        return;
    }
    m_image = cueSheet;
    if (m_cdMode) {
        // Another disc in the same drive.
        emit stopRequested();
        m_cddb.cancel();
        CDMedia = -1;
        CDStatus();
    } else {
        enterCdMode();
    }
}

void CdPart::PlayImage(const QString &cueSheet)
{
    OpenImage(cueSheet);
    if (m_cdMode && m_image == cueSheet && m_table.CDTracks > 0) {
        m_playlist.CurTrack = 1;
        emit playRequested();
    }
}

void CdPart::PlayTrack(int track)
{
    enterCdMode();
    if (track >= 1 && track <= m_table.CDTracks) {
        m_playlist.CurTrack = track;
        emit playRequested();
    }
}

void CdPart::EjectIt()
{
    emit stopRequested();
    if (m_cdMode)
        forgetDisc();
    if (!m_image.isEmpty()) {
        // An image has no tray: it is taken out, and the drive is the source again.
        m_image.clear();
    } else if (!m_svc.drive.eject(source())) {
        qWarning().noquote() << "CD: the drive" << source() << "did not open";
    }
    CDMedia = -1;
    m_beats = 0;
    if (m_cdMode)
        CDStatus();
}

// The device's mode: the drive's, and while a track of this disc plays, the
// engine's. A disc whose stamp changed reads as a tray gone out and in.
int CdPart::Mode()
{
    switch (m_svc.drive.status(source())) {
    case CdDrive::Status::TrayOpen:
        return Open;
    case CdDrive::Status::Disc:
        break;
    default:
        return NotReady;
    }
    if (CDMedia == -1)
        return NotReady;
    const QByteArray stamp = m_svc.drive.discStamp(source());
    if (!stamp.isEmpty() && stamp != m_stamp)
        return Open;
    if (m_playback.CDMode && m_playback.playing)
        return m_playback.paused ? Paused : Playing;
    return Stopped;
}

// Where the head is on the disc: the start of the current track, and while
// it plays, as far into it as the engine counts.
qint32 CdPart::position() const
{
    const int track = qBound(1, m_playlist.CurTrack, qMax<int>(1, m_table.CDTracks));
    const qint32 start = m_table.tracks[size_t(track)].StartMs;
    return m_playback.CDMode && m_playback.playing ? start + m_playback.PlayPos : start;
}

void CdPart::CDStatus()
{
    if (CDMedia != -1) {
        const qint32 at = position();
        if (at < CDStart || at > CDEnd)
            CD_FindTrack();
    } else if (m_beats++ % kBeatsBetweenChecks == 0 || !m_image.isEmpty()) {
        CD_Check();
        if (CDMedia >= 1)
            CD_FindTrack();
    }
    const int mode = Mode();
    if (mode == CDLastMode)
        return;
    CDLastMode = mode;
    // A lookup running keeps the line: it tells what the wait is for.
    if (m_cddb.step() == CddbClient::Step::Done)
        setStatus(cdStatusWord(mode, m_playback.paused));
    if (mode == NotReady || mode == Open) {
        // The disc went, or another came: what played of it stops, its
        // tracks go, and the next beat reads the drive again.
        if (CDMedia != -1)
            forgetDisc();
        CDMedia = -1;
        m_beats = 0;
    }
}

void CdPart::forgetDisc()
{
    if (m_playback.CDMode && m_playback.playing)
        emit stopRequested();
    m_cddb.cancel();
    m_disc = CdDisc();
    m_table = CdTable();
    CDTrack = 0;
    CDStart = CDEnd = 0;
    m_playlist.PlNames.clear();
    m_playlist.PlPath.clear();
    m_playlist.CurTrack = 0;
    m_playlist.title = QStringLiteral("Audio CD");
    showArtist(QString(), QString());
    emit playlistChanged();
}

void CdPart::CD_Check()
{
    CD_OpenDev();
    // Less than 99 frames is no disc worth playing.
    if (CDMedia < 99) {
        CD_CloseDev();
        return;
    }
    CD_ReadTOC();
    CDTitlesLoaded = false;
    if (m_options.UseCDP == 1)
        LoadCDP(m_table.CDPlayerId);
    if (!CDTitlesLoaded)
        useCdText();
    if (m_options.UseCDDB == 1 && !CDTitlesLoaded)
        CDDBQuery(m_table.CDDBId);
}

void CdPart::CD_OpenDev()
{
    m_disc = m_svc.drive.read(source());
    m_stamp = m_svc.drive.discStamp(source());
    CDMedia = m_disc.ok() ? m_disc.lengthSectors() : 0;
}

void CdPart::CD_CloseDev()
{
    CDMedia = -1;
}

void CdPart::CD_ReadTOC()
{
    m_cddb.cancel();
    m_table = readCdTable(m_disc);
    CDTrack = 0;
    CDStart = CDEnd = 0;
    m_playlist.PlNames = m_table.names;
    m_playlist.PlPath.clear();
    for (int t = 1; t <= m_table.CDTracks; ++t)
        m_playlist.PlPath << QString::fromUtf8(
            cdTrackUrl(m_disc.playSource, m_disc.tracks[t - 1].number));
    m_playlist.CurTrack = 1;
    m_playlist.title = m_disc.title.isEmpty() ? QStringLiteral("Audio CD") : m_disc.title;
    showArtist(m_disc.performer, m_disc.title);
    emit playlistChanged();
    CD_FindTrack();
}

void CdPart::CD_FindTrack()
{
    const int track = findCdTrack(m_table, position());
    if (track == 0)
        return;
    const CdTrackTime &t = m_table.tracks[size_t(track)];
    CDStart = t.StartMs;
    CDEnd = t.EndMs;
    CDTrack = track;
}

void CdPart::nameTrack(int index, const QString &title)
{
    if (index >= 0 && index < m_playlist.PlNames.size() && index < m_table.CDTracks)
        m_playlist.PlNames[index] =
            MakeCDEntry(index + 1, title, m_table.tracks[size_t(index + 1)].LengthMs);
}

void CdPart::LoadCDP(const QString &id)
{
    const FileBytes file = readRegularFile(m_svc.titleFile, kMaxTitleFileBytes);
    if (file.fault != FileFault::None) {
        if (file.fault != FileFault::Missing)
            qWarning().noquote() << "CD: the title file" << m_svc.titleFile << "is"
                                 << faultText(file.fault);
        return;
    }
    const CdPlayerTitles found = readCdPlayerIni(file.bytes, id, m_table.CDTracks);
    for (const auto &[index, title] : found.titles)
        nameTrack(index, title);
    if (found.found)
        CDTitlesLoaded = true;
    if (!found.titles.isEmpty())
        emit playlistChanged();
    if (!found.message.isEmpty())
        m_svc.dialogs.message(found.message);
}

// Titles the disc carries itself, before asking a server.
void CdPart::useCdText()
{
    bool named = false;
    for (int i = 0; i < m_table.CDTracks; ++i) {
        if (!m_disc.tracks[i].title.isEmpty()) {
            nameTrack(i, m_disc.tracks[i].title);
            named = true;
        }
    }
    if (!named)
        return;
    CDTitlesLoaded = true;
    emit playlistChanged();
}

void CdPart::CDDBQuery(const QString &id)
{
    CddbClient::Disc disc;
    disc.id = id;
    for (int t = 1; t <= m_table.CDTracks; ++t)
        disc.frames << m_table.tracks[size_t(t)].Frames;
    disc.seconds = m_table.CDSeconds;
    m_cddb.CDDBQuery(disc);
}

void CdPart::entryRead(const QString &discId, const CddbDiscEntry &entry)
{
    // A disc changed meanwhile keeps its own names.
    if (!m_cdMode || discId != m_table.CDDBId)
        return;
    for (int i = 0; i < entry.titles.size(); ++i)
        if (!entry.titles[i].isEmpty())
            nameTrack(i, entry.titles[i]);
    CDTitlesLoaded = true;
    if (!entry.artist.isEmpty() || !entry.album.isEmpty())
        showArtist(entry.artist, entry.album);
    emit playlistChanged();
}
