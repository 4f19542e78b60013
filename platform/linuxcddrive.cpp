#include "linuxcddrive.h"

#include "cdiolog.h"
#include "cuesheet.h"
#include "findfile.h"
#include "readfile.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QtDebug>

#include <algorithm>

#include <cdio/cdio.h>
#include <cdio/cdtext.h>

#include <fcntl.h>
#include <linux/cdrom.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A cue sheet is text of a few kilobytes; anything far bigger is not one.
constexpr qint64 kMaxCueBytes = 1024 * 1024;

QByteArray fileStamp(const QString &path)
{
    const QFileInfo info(path);
    if (!info.exists())
        return QByteArray();
    return QByteArray::number(info.size()) + ':' +
           QByteArray::number(info.lastModified().toMSecsSinceEpoch());
}

QString cdText(cdtext_t *text, cdtext_field_t field, track_t track)
{
    const char *value = text ? cdtext_get_const(text, field, track) : nullptr;
    return value ? QString::fromUtf8(value).trimmed() : QString();
}

// libcdio reads the sectors of "x.cue" from "x.bin" (or "X.BIN" for "X.CUE").
QString libcdioImageName(const QString &cue)
{
    if (cue.endsWith(QLatin1String("cue")))
        return cue.chopped(3) + QStringLiteral("bin");
    if (cue.endsWith(QLatin1String("CUE")))
        return cue.chopped(3) + QStringLiteral("BIN");
    return QString();
}

// Beside the sheet, as written or in another letter case; a path written on
// another machine ("C:\Rips\disc.bin") by its bare name.
QString findImage(const QString &folder, const QString &written)
{
    const QString found = findFileNoCase(folder, written);
    if (!found.isEmpty())
        return found;
    const qsizetype cut =
        std::max(written.lastIndexOf(QLatin1Char('/')), written.lastIndexOf(QLatin1Char('\\')));
    return cut < 0 ? QString() : findFileNoCase(folder, written.mid(cut + 1));
}

CdDisc readToc(CdIo_t *cdio, CdDisc disc)
{
    const track_t first = cdio_get_first_track_num(cdio);
    const track_t count = cdio_get_num_tracks(cdio);
    if (first == CDIO_INVALID_TRACK || count == CDIO_INVALID_TRACK || count == 0 ||
        first + count - 1 > 99) {
        disc.problem = QStringLiteral("The disc has no audio tracks that can be read.");
        return disc;
    }
    for (track_t t = first; t < first + count; ++t) {
        CdDisc::Track track;
        track.number = t;
        track.start = cdio_get_track_lba(cdio, t);
        track.audio = cdio_get_track_format(cdio, t) == TRACK_FORMAT_AUDIO;
        disc.tracks << track;
    }
    disc.leadOut = cdio_get_track_lba(cdio, CDIO_CDROM_LEADOUT_TRACK);
    for (int i = 0; i < disc.tracks.size(); ++i) {
        const qint32 end = i + 1 < disc.tracks.size() ? disc.tracks[i + 1].start : disc.leadOut;
        disc.tracks[i].sectors = end - disc.tracks[i].start;
        if (disc.tracks[i].start < 0 || disc.tracks[i].sectors <= 0) {
            disc.tracks.clear();
            disc.problem = QStringLiteral("The disc's table of contents makes no sense.");
            return disc;
        }
    }
    cdtext_t *text = cdio_get_cdtext(cdio);
    disc.title = cdText(text, CDTEXT_FIELD_TITLE, 0);
    disc.performer = cdText(text, CDTEXT_FIELD_PERFORMER, 0);
    for (CdDisc::Track &track : disc.tracks) {
        track.title = cdText(text, CDTEXT_FIELD_TITLE, track_t(track.number));
        track.performer = cdText(text, CDTEXT_FIELD_PERFORMER, track_t(track.number));
    }
    return disc;
}

} // namespace

LinuxCdDrive::LinuxCdDrive()
{
    quietCdioLog();
}

LinuxCdDrive::~LinuxCdDrive() = default;

bool LinuxCdDrive::isImage(const QString &source)
{
    const QFileInfo info(source);
    return info.isFile() || info.suffix().compare(QLatin1String("cue"), Qt::CaseInsensitive) == 0;
}

CdDrive::Status LinuxCdDrive::status(const QString &source)
{
    if (isImage(source))
        return QFileInfo(source).isFile() ? Status::Disc : Status::NoDisc;
    struct stat st
    {
    };
    if (source.isEmpty() || ::stat(QFile::encodeName(source).constData(), &st) != 0 ||
        !S_ISBLK(st.st_mode))
        return Status::NoDrive;
    // Non-blocking, so an empty drive opens at all and nothing waits for a disc.
    const int fd = ::open(QFile::encodeName(source).constData(), O_RDONLY | O_NONBLOCK);
    if (fd < 0)
        return Status::NoDrive;
    const int state = ::ioctl(fd, CDROM_DRIVE_STATUS, CDSL_CURRENT);
    ::close(fd);
    switch (state) {
    case CDS_NO_DISC:
        return Status::NoDisc;
    case CDS_TRAY_OPEN:
        return Status::TrayOpen;
    case CDS_DRIVE_NOT_READY:
        return Status::NotReady;
    case CDS_DISC_OK:
    case CDS_NO_INFO: // the drive cannot tell: reading will
        return Status::Disc;
    default:
        return Status::NoDrive; // not a CD drive
    }
}

QByteArray LinuxCdDrive::discStamp(const QString &source)
{
    if (!isImage(source))
        return QByteArray();
    return fileStamp(source) + '|' + fileStamp(m_images.value(source));
}

CdDisc LinuxCdDrive::read(const QString &source)
{
    return isImage(source) ? readImage(source) : readDrive(source);
}

CdDisc LinuxCdDrive::readImage(const QString &cue)
{
    CdDisc disc;
    const FileBytes bytes = readRegularFile(cue, kMaxCueBytes);
    if (bytes.fault != FileFault::None) {
        disc.problem = QStringLiteral("The cue sheet cannot be read: it is %1.")
                           .arg(QLatin1String(faultText(bytes.fault)));
        return disc;
    }
    const CueSheet sheet = parseCueSheet(bytes.bytes);
    const QString image = sheet.files.isEmpty()
                              ? QString()
                              : findImage(QFileInfo(cue).absolutePath(), sheet.files.first().name);
    const QFileInfo imageInfo(image);
    const qint64 imageBytes = !image.isEmpty() && imageInfo.isFile() ? imageInfo.size() : -1;
    disc.problem = cueSheetProblem(sheet, imageBytes);
    if (!disc.problem.isEmpty())
        return disc;
    m_images.insert(cue, image);

    const QString absoluteCue = QFileInfo(cue).absoluteFilePath();
    const QString expected = libcdioImageName(absoluteCue);
    disc.playSource = !expected.isEmpty() && QFileInfo(expected).canonicalFilePath() ==
                                                 imageInfo.canonicalFilePath()
                          ? absoluteCue
                          : viewOf(absoluteCue, bytes.bytes, imageInfo.absoluteFilePath());
    if (disc.playSource.isEmpty()) {
        disc.problem = QStringLiteral("Velto could not prepare the image for reading.");
        return disc;
    }
    CdIo_t *cdio = cdio_open(QFile::encodeName(disc.playSource).constData(), DRIVER_BINCUE);
    if (!cdio) {
        disc.problem = QStringLiteral("The image could not be opened.");
        return disc;
    }
    disc = readToc(cdio, disc);
    cdio_destroy(cdio);
    // libcdio reads the sheet's titles as Latin-1 whatever they are; ours
    // knows UTF-8 too. Its own CD-Text (a CDTEXTFILE) fills the rest.
    const auto prefer = [](QString &title, const QString &sheetTitle) {
        if (!sheetTitle.trimmed().isEmpty())
            title = sheetTitle.trimmed();
    };
    prefer(disc.title, sheet.title);
    prefer(disc.performer, sheet.performer);
    for (int i = 0; i < disc.tracks.size() && i < sheet.tracks.size(); ++i) {
        prefer(disc.tracks[i].title, sheet.tracks[i].title);
        prefer(disc.tracks[i].performer, sheet.tracks[i].performer);
    }
    return disc;
}

QString LinuxCdDrive::viewOf(const QString &cue, const QByteArray &cueBytes, const QString &image)
{
    if (!m_views) {
        m_views =
            std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/velto-cd-XXXXXX"));
        if (!m_views->isValid()) {
            qWarning().noquote() << "CD: no folder for image views:" << m_views->errorString();
            m_views.reset();
            return QString();
        }
    }
    // A fresh pair for each read: a view still playing is never changed under it.
    const QString base = m_views->filePath(QString::number(++m_viewCount));
    QSaveFile sheet(base + QStringLiteral(".cue"));
    if (!sheet.open(QIODevice::WriteOnly) || sheet.write(cueBytes) != cueBytes.size() ||
        !sheet.commit() || !QFile::link(image, base + QStringLiteral(".bin"))) {
        qWarning().noquote() << "CD: the view of" << cue << "could not be made";
        return QString();
    }
    return base + QStringLiteral(".cue");
}

CdDisc LinuxCdDrive::readDrive(const QString &device)
{
    CdDisc disc;
    switch (status(device)) {
    case Status::NoDrive:
        disc.problem = QStringLiteral("There is no CD drive at %1.").arg(device);
        return disc;
    case Status::Disc:
        break;
    default:
        disc.problem = QStringLiteral("There is no disc in the drive.");
        return disc;
    }
    CdIo_t *cdio = cdio_open(QFile::encodeName(device).constData(), DRIVER_LINUX);
    if (!cdio) {
        disc.problem = QStringLiteral("The disc in %1 cannot be read.").arg(device);
        return disc;
    }
    disc.playSource = device;
    disc = readToc(cdio, disc);
    cdio_destroy(cdio);
    return disc;
}

bool LinuxCdDrive::eject(const QString &source)
{
    if (isImage(source) || status(source) == Status::NoDrive)
        return false;
    return cdio_eject_media_drive(QFile::encodeName(source).constData()) == DRIVER_OP_SUCCESS;
}
