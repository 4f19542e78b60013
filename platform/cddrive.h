#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

// The disc in a CD drive, or in a disc image, as its table of contents and
// its CD-Text tell it. Sectors are 1/75 s; disc positions count from the
// start of the disc, the two seconds (150 sectors) before track 1 included.
struct CdDisc
{
    static constexpr int kLeadIn = 150;

    struct Track
    {
        int number = 0;
        qint32 start = 0; // disc position of the track's first sector
        qint32 sectors = 0;
        bool audio = true;
        QString title, performer; // CD-Text; empty when the disc has none
    };

    QList<Track> tracks; // in disc order
    qint32 leadOut = 0;  // disc position where the last track ends
    QString title, performer;
    // What the media engine reads the tracks from: the drive, the cue sheet,
    // or a view of the image that the drive made (see LinuxCdDrive).
    QString playSource;
    // Why the disc could not be read, for the user; empty when it was.
    QString problem;

    bool ok() const { return problem.isEmpty() && !tracks.isEmpty(); }
    // From the start of the first track to the lead-out.
    qint32 lengthSectors() const { return tracks.isEmpty() ? 0 : leadOut - tracks.first().start; }
};

// An audio CD drive, or a disc image (a .cue sheet with its .bin) that acts
// as one. A source is the drive's device file or the cue sheet's path.
class CdDrive
{
public:
    enum class Status {
        NoDrive,  // nothing at that path, or not a drive we may read
        NoDisc,   // an empty drive, or an image file that is gone
        TrayOpen, // the tray is out
        NotReady, // a disc is in but the drive is still spinning it up
        Disc,
    };

    virtual ~CdDrive() = default;

    // Asked four times a second: it never spins a disc up or reads it.
    virtual Status status(const QString &source) = 0;
    // Changes when another disc is in (another image file written over the
    // old one); empty when the drive cannot tell without reading the disc.
    virtual QByteArray discStamp(const QString &source) = 0;
    // Reads the table of contents and the CD-Text. Waits for the drive: up to
    // a few seconds for a disc just put in, a few milliseconds for an image.
    virtual CdDisc read(const QString &source) = 0;
    // Opens the tray. An image has none: false.
    virtual bool eject(const QString &source) = 0;
};

// How the media engine names track `track` of a disc: "cdtrack://N/path".
inline QByteArray cdTrackUrl(const QString &playSource, int track)
{
    return "cdtrack://" + QByteArray::number(track) + playSource.toUtf8();
}

// The track and the disc's path of such a name; false for any other text.
inline bool parseCdTrackUrl(const QByteArray &url, int &track, QString &path)
{
    static const QByteArray prefix = "cdtrack://";
    if (!url.startsWith(prefix))
        return false;
    qsizetype slash = url.indexOf('/', prefix.size());
    if (slash <= prefix.size() || slash - prefix.size() > 2)
        return false;
    bool ok = false;
    track = url.mid(prefix.size(), slash - prefix.size()).toInt(&ok);
    if (!ok || track < 1 || track > 99)
        return false;
    path = QString::fromUtf8(url.mid(slash));
    return true;
}
