#include "id3tag.h"

#include "platform/readfile.h"

#include <QDebug>
#include <QFile>

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
    const QByteArray old = p < 0 ? QByteArray() : last.mid(p, 128);

    if (out.seek(at) && out.write(record) == record.size())
        return p < 0 ? TagWrite::Added : TagWrite::Updated;
    qWarning("velto: writing the tag of %s failed: %s", qPrintable(file),
             qPrintable(out.errorString()));
    if (out.seek(at))
        out.write(old);
    out.resize(size);
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
