#include "id3tag.h"

#include "platform/readfile.h"

#include <QDataStream>
#include <QDebug>
#include <QFile>
#include <QSaveFile>

#include <cmath>
#include <optional>

namespace {

// Fixed-length field: cut when longer, padded with spaces when shorter.
QByteArray fixedBytes(const QString &text, int length)
{
    QByteArray bytes = toWindows1252(text).left(length);
    return bytes + QByteArray(length - bytes.size(), ' ');
}

QString fixedText(const QByteArray &bytes, qsizetype from, int length)
{
    const QString text = fromWindows1252(bytes.mid(from, length));
    return text + QString(length - text.size(), QLatin1Char(' '));
}

int codeAt(const QByteArray &bytes, qsizetype at)
{
    return at < bytes.size() ? quint8(bytes[at]) : ' ';
}

QString shown(const QString &field)
{
    const qsizetype nul = field.indexOf(QChar(0));
    QString text = nul < 0 ? field : field.left(nul);
    qsizetype begin = 0, end = text.size();
    while (begin < end && text[begin] == QLatin1Char(' '))
        ++begin;
    while (end > begin && text[end - 1] == QLatin1Char(' '))
        --end;
    return text.mid(begin, end - begin);
}

// Track and genre must each become one byte; anything else cannot be saved.
std::optional<char> oneByte(double value)
{
    const double rounded = std::nearbyint(value); // half to even, as the old forms did
    if (!(rounded >= 0 && rounded <= 255))
        return std::nullopt;
    return char(int(rounded));
}

} // namespace

const QStringList &genreList()
{
    static const QStringList list = {
        QStringLiteral("Unknown"),
        QStringLiteral("Blues"),
        QStringLiteral("Classic Rock"),
        QStringLiteral("Country"),
        QStringLiteral("Dance"),
        QStringLiteral("Disco"),
        QStringLiteral("Funk"),
        QStringLiteral("Grunge"),
        QStringLiteral("Hip-Hop"),
        QStringLiteral("Jazz"),
        QStringLiteral("Metal"),
        QStringLiteral("New Age"),
        QStringLiteral("Oldies"),
        QStringLiteral("Other"),
        QStringLiteral("Pop"),
        QStringLiteral("R&B"),
        QStringLiteral("Rap"),
        QStringLiteral("Reggae"),
        QStringLiteral("Rock"),
        QStringLiteral("Techno"),
        QStringLiteral("Industrial"),
        QStringLiteral("Alternative"),
        QStringLiteral("Ska"),
        QStringLiteral("Death Metal"),
        QStringLiteral("Pranks"),
        QStringLiteral("Soundtrack"),
        QStringLiteral("Euro-Techno"),
        QStringLiteral("Ambient"),
        QStringLiteral("Trip-Hop"),
        QStringLiteral("Vocal"),
        QStringLiteral("Jazz+Funk"),
        QStringLiteral("Fusion"),
        QStringLiteral("Trance"),
        QStringLiteral("Classical"),
        QStringLiteral("Intrumental"),
        QStringLiteral("Acid"),
        QStringLiteral("House"),
        QStringLiteral("Game"),
        QStringLiteral("Sound Clip"),
        QStringLiteral("Gospel"),
        QStringLiteral("Noise"),
        QStringLiteral("Alternate Rock"),
        QStringLiteral("Bass"),
        QStringLiteral("Soul"),
        QStringLiteral("Punk"),
        QStringLiteral("Space"),
        QStringLiteral("Meditative"),
        QStringLiteral("Intrumental Pop"),
        QStringLiteral("Intrumental Rock"),
        QStringLiteral("Ethnic"),
        QStringLiteral("Gothic"),
        QStringLiteral("Darkwave"),
        QStringLiteral("Techno-Industrial"),
        QStringLiteral("Electronic"),
        QStringLiteral("Pop-Folk"),
        QStringLiteral("Eurodance"),
        QStringLiteral("Dream"),
        QStringLiteral("Southern Rock"),
        QStringLiteral("Comedy"),
        QStringLiteral("Cult"),
        QStringLiteral("Gangsta"),
        QStringLiteral("Top 40"),
        QStringLiteral("Christian Rap"),
        QStringLiteral("Pop/Funk"),
        QStringLiteral("Jungle"),
        QStringLiteral("Native American"),
        QStringLiteral("Cabaret"),
        QStringLiteral("New Wave"),
        QStringLiteral("Psychadelic"),
        QStringLiteral("Rave"),
        QStringLiteral("Showtunes"),
        QStringLiteral("Trailer"),
        QStringLiteral("Lo-Fi"),
        QStringLiteral("Tribal"),
        QStringLiteral("Acid Punk"),
        QStringLiteral("Acid Jazz"),
        QStringLiteral("Polka"),
        QStringLiteral("Retro"),
        QStringLiteral("Musical"),
        QStringLiteral("Rock & Roll"),
        QStringLiteral("Hard Rock"),
    };
    return list;
}

QString genreName(int code)
{
    const QStringList &list = genreList();
    return code >= 0 && code < list.size() ? list[code] : list[0];
}

qsizetype findTagMarker(const QByteArray &bytes)
{
    for (qsizetype i = 0; i + 2 < bytes.size(); ++i) {
        if ((bytes[i] | 0x20) == 't' && (bytes[i + 1] | 0x20) == 'a' &&
            (bytes[i + 2] | 0x20) == 'g')
            return i;
    }
    return -1;
}

TagRecord readTag(const QByteArray &last256)
{
    TagRecord tag;
    const qsizetype p = findTagMarker(last256);
    if (p < 0)
        return tag;
    tag.Title = fixedText(last256, p + 3, 30);
    tag.Artist = fixedText(last256, p + 33, 30);
    tag.Album = fixedText(last256, p + 63, 30);
    tag.Year = fixedText(last256, p + 93, 4);
    tag.Comment = fixedText(last256, p + 97, 29);
    tag.Track = codeAt(last256, p + 126);
    tag.Genre = codeAt(last256, p + 127);
    return tag;
}

TagFields fieldsFromRecord(const TagRecord &record)
{
    TagFields fields;
    fields.title = shown(record.Title);
    fields.artist = shown(record.Artist);
    fields.album = shown(record.Album);
    fields.year = shown(record.Year);
    fields.comment = shown(record.Comment);
    fields.track = QStringLiteral("%1").arg(record.Track, 2, 10, QLatin1Char('0'));
    fields.genre = record.Genre > 80 ? 0 : record.Genre;
    return fields;
}

namespace {

QString g_backupFile;

// What the file held from `at` to its end before the write, and its length.
struct TailBackup
{
    QString file;
    qint64 size = 0;
    qint64 at = 0;
    QByteArray old;
};

constexpr quint32 kBackupMagic = 0x56544147; // "VTAG"

bool saveBackup(const QString &path, const TailBackup &b)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << kBackupMagic << b.file << b.size << b.at << b.old;
    QSaveFile save(path);
    return save.open(QIODevice::WriteOnly) && save.write(bytes) == bytes.size() && save.commit();
}

std::optional<TailBackup> loadBackup(const QString &path)
{
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly))
        return std::nullopt;
    QDataStream stream(&in);
    quint32 magic = 0;
    TailBackup b;
    stream >> magic >> b.file >> b.size >> b.at >> b.old;
    if (stream.status() != QDataStream::Ok || magic != kBackupMagic || b.file.isEmpty() ||
        b.at < 0 || b.at > b.size || b.old.size() != b.size - b.at)
        return std::nullopt;
    return b;
}

// Writes bytes at `at`, cuts the file to `size` when given, and reads the
// bytes back: only a write that reads back counts.
bool writeAndVerify(QFile &out, qint64 at, const QByteArray &bytes, qint64 size = -1)
{
    if (!out.seek(at) || out.write(bytes) != bytes.size())
        return false;
    if (size >= 0 && !out.resize(size))
        return false;
    out.flush();
    return out.seek(at) && out.read(bytes.size()) == bytes;
}

} // namespace

void setTagBackupFile(const QString &path)
{
    g_backupFile = path;
}

bool restoreCutTagWrite(const QString &backupFile)
{
    if (!QFile::exists(backupFile))
        return true;
    const std::optional<TailBackup> b = loadBackup(backupFile);
    if (b) {
        QFile out;
        const FileFault fault =
            openRegularFile(out, b->file, QIODevice::ReadWrite | QIODevice::Unbuffered);
        // A file gone since is no longer ours to mend.
        if (fault == FileFault::None && !writeAndVerify(out, b->at, b->old, b->size)) {
            qWarning("velto: cannot put back the tag of %s: %s", qPrintable(b->file),
                     qPrintable(out.errorString()));
            return false;
        }
        if (fault == FileFault::None)
            qWarning("velto: the last tag write to %s was cut; the old tag is back",
                     qPrintable(b->file));
    }
    QFile::remove(backupFile);
    return true;
}

TagWrite writeTag(const QString &file, const TagFields &fields)
{
    const std::optional<char> track = oneByte(leadingNumber(fields.track));
    const std::optional<char> genre = oneByte(fields.genre);
    if (!track || !genre || file.isEmpty())
        return TagWrite::Failed;
    const QByteArray record = "TAG" + fixedBytes(fields.title, 30) + fixedBytes(fields.artist, 30) +
                              fixedBytes(fields.album, 30) + fixedBytes(fields.year, 4) +
                              fixedBytes(fields.comment, 29) + *track + *genre;

    // Never creates: a file that vanished must not come back as a bare tag.
    QFile out;
    const FileFault fault =
        openRegularFile(out, file, QIODevice::ReadWrite | QIODevice::Unbuffered);
    if (fault != FileFault::None) {
        qWarning("velto: cannot open %s to write its tag: %s", qPrintable(file), faultText(fault));
        return TagWrite::Failed;
    }
    const qint64 size = out.size();
    const qint64 from = qMax<qint64>(0, size - 256);
    if (!out.seek(from))
        return TagWrite::Failed;
    const QByteArray last = out.read(size - from);
    if (last.size() != size - from)
        return TagWrite::Failed;
    const qsizetype p = findTagMarker(last);
    const qint64 at = p < 0 ? size : from + p;
    const QByteArray old = last.mid(at - from);

    const QString backup = g_backupFile;
    if (!backup.isEmpty() && !saveBackup(backup, {file, size, at, old})) {
        qWarning("velto: cannot keep the old tag of %s in %s; not writing", qPrintable(file),
                 qPrintable(backup));
        return TagWrite::Failed;
    }
    if (writeAndVerify(out, at, record)) {
        if (!backup.isEmpty())
            QFile::remove(backup);
        return p < 0 ? TagWrite::Added : TagWrite::Updated;
    }
    qWarning("velto: writing the tag of %s failed: %s", qPrintable(file),
             qPrintable(out.errorString()));
    if (writeAndVerify(out, at, old, size) && !backup.isEmpty())
        QFile::remove(backup);
    return TagWrite::Failed;
}

QString tagWriteMessage(TagWrite result)
{
    switch (result) {
    case TagWrite::Added:
        return QStringLiteral("Tag Added!");
    case TagWrite::Updated:
        return QStringLiteral("Tag Updated!");
    case TagWrite::Failed:
        break;
    }
    return QStringLiteral("Error writing tag (is file in use?)!");
}
