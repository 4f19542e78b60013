#pragma once

#include "cddbclient.h"
#include "cdtable.h"

#include "platform/cddrive.h"
#include "player/playbackengine.h"
#include "player/playlist.h"
#include "skin/skinpart.h"

#include <QObject>

class Dialogs;
class HttpFetch;
class SkinSurface;

// The audio CD: a disc in the drive, or a disc image (a .cue) that plays as
// one. In CD mode the playlist holds the disc's tracks, named "Track  1" and
// so on, then from the CD player's title file, the disc's CD-Text or a CDDB
// server; the playback engine plays them like files. This part follows the
// drive on the clock's beat: a disc taken out, another put in (or another
// image written over the one open), and shows the drive's state as a word on
// the status line. The media files' playlist waits aside until CD mode ends.
class CdPart : public QObject, public SkinPart
{
    Q_OBJECT
public:
    // The settings it reads; they belong to the program's settings and outlive the part.
    struct Options
    {
        const qint16 &UseCDP;
        const qint16 &UseCDDB;
        const QString &CDDBcmd;
        const QString &EmailID;
        const QString &CDDrive; // the drive's device file
    };
    struct Services
    {
        SkinSurface &skin;
        Dialogs &dialogs;
        CdDrive &drive;
        HttpFetch &http;
        QString titleFile; // cdplayer.ini in the program folder
    };

    // The status line and the line of the disc's artist and album, as the
    // shipped skins number them.
    static constexpr int kStatusLabel = 15;
    static constexpr int kArtistLabel = 2;
    // Device modes, as numbered for media devices.
    enum Mode { NotReady = 524, Stopped = 525, Playing = 526, Paused = 529, Open = 530 };

    CdPart(PlaylistState &playlist, const PlaybackState &playback, Options options,
           Services services);
    ~CdPart() override;

    // SkinPart: 13 ejects, 37 toggles CD mode.
    void DoIt(qint16 cmd) override;
    void skinLoaded() override;
    void settingsChanged() override;
    void clockTick(const QDateTime &now) override;
    void ending(bool interactive) override;

    void EjectIt();
    void ToggleCDMode();
    // Back to the media files and their playlist; nothing when not in CD mode.
    void leaveCdMode();
    // A disc image to play as the disc in the drive: a message and nothing
    // else when it cannot be read. PlayImage then plays its first track.
    void OpenImage(const QString &cueSheet);
    void PlayImage(const QString &cueSheet);
    // A CD track file ("Track05.cda") played among the media files.
    void PlayTrack(int track);

    // The procedures of the CD device, run by CDStatus on the beat.
    void CDStatus();
    void CD_Check();
    void CD_OpenDev();
    void CD_CloseDev();
    void CD_ReadTOC();
    void CD_FindTrack();
    void LoadCDP(const QString &id);
    void CDDBQuery(const QString &id);

    bool cdMode() const { return m_cdMode; }
    // The image played as the disc, or the drive.
    QString source() const;
    const CdTable &table() const { return m_table; }
    const CdDisc &disc() const { return m_disc; }
    bool titlesLoaded() const { return CDTitlesLoaded; }
    qint32 media() const { return CDMedia; }
    int track() const { return CDTrack; }
    CddbClient &cddb() { return m_cddb; }

signals:
    // The engine follows: files, or the disc's tracks.
    void cdModeChanged(bool on);
    // The list's names changed, or the whole list.
    void playlistChanged();
    void playRequested();
    void stopRequested();

private:
    void enterCdMode();
    void forgetDisc();
    int Mode();
    qint32 position() const;
    void setStatus(const QString &text);
    void showArtist(const QString &artist, const QString &album);
    void nameTrack(int index, const QString &title);
    void useCdText();
    void entryRead(const QString &discId, const CddbDiscEntry &entry);

    PlaylistState &m_playlist;
    const PlaybackState &m_playback;
    Options m_options;
    Services m_svc;
    CddbClient m_cddb;

    bool m_cdMode = false;
    PlaylistState m_files; // the media files' list, while CD mode lasts
    QString m_image;       // the image that is the disc; empty for the drive
    CdDisc m_disc;
    CdTable m_table;
    QByteArray m_stamp; // of the disc read
    QString m_status, m_artistLine;
    int m_beats = 0;
    bool m_toldNoDrive = false;

    // The device's state, as the procedures name it.
    qint32 CDMedia = -1; // the disc's length in frames; -1: closed, check again
    int CDLastMode = 0;
    bool CDTitlesLoaded = false;
    int CDTrack = 0;
    qint32 CDStart = 0, CDEnd = 0, CDTrackLen = 0;
};
