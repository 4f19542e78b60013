#include "playlist.h"

#include "folderscan.h"
#include "mediatype.h"
#include "platform/readfile.h"
#include "platform/text.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QUrl>

namespace {

// File URLs without a host, encoded and decoded byte for byte: QUrl turns
// noncharacters such as U+FFFF into replacement marks, cuts a name at "#" or
// "?", and reads a path starting "//" as a server's.
bool isFileUrl(const QString &entry)
{
    return entry.startsWith(QLatin1String("file:///"), Qt::CaseInsensitive);
}

QString fileUrlPath(const QString &url)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(url.mid(7).toUtf8()));
}

QString fileUrlOf(const QString &path)
{
    return QLatin1String("file://") + QString::fromLatin1(path.toUtf8().toPercentEncoding("/"));
}

bool isUrl(const QString &entry)
{
    // A scheme of two or more letters, so "D://x" stays a drive path.
    const int colon = entry.indexOf(QLatin1String("://"));
    if (colon < 2)
        return false;
    for (int i = 0; i < colon; ++i) {
        if (!entry[i].isLetter())
            return false;
    }
    return true;
}

// A path written on a system with drive letters. It cannot be taken
// literally here: try it below the list's folder, then from the root, and keep
// it as written (it is marked missing when played) when neither exists.
QString resolveRooted(const QString &rest, const QString &base, const QString &asWritten)
{
    QString relative = rest;
    while (relative.startsWith(QLatin1Char('/')))
        relative.remove(0, 1);
    if (relative.contains(QChar(0))) // no file can be named so
        return asWritten;
    if (!base.isEmpty() && QFileInfo::exists(base + relative))
        return base + relative;
    if (QFileInfo::exists(QLatin1Char('/') + relative))
        return QLatin1Char('/') + relative;
    return asWritten;
}

} // namespace

void Playlist::PlClear()
{
    m_state.PlNames.clear();
    m_state.PlPath.clear();
    m_state.CurTrack = 1;
    m_state.title = QStringLiteral("untitled");
    m_state.file.clear();
}

void Playlist::append(const QString &display, const QString &path)
{
    if (m_state.PlPath.size() >= kMaxEntries)
        return;
    m_state.PlNames << display;
    m_state.PlPath << path;
}

Playlist::ListType Playlist::typeOf(const QString &file)
{
    const QString ext = mediaExtension(file);
    if (ext == QLatin1String("M3U") || ext == QLatin1String("M3U8"))
        return ListType::M3u;
    if (ext == QLatin1String("PLS"))
        return ListType::Pls;
    return ListType::None;
}

QStringList Playlist::readEntries(const QByteArray &bytes, ListType type, int room)
{
    QStringList entries;
    qsizetype start = 0;
    const qsizetype size = bytes.size();
    while (start < size && entries.size() < room) {
        qsizetype end = start;
        while (end < size && bytes[end] != '\n' && bytes[end] != '\r')
            ++end;
        const QString line = ::decodeText(bytes.mid(start, end - start)).trimmed();
        start = end + 1;
        if (end + 1 < size && bytes[end] == '\r' && bytes[end + 1] == '\n')
            ++start;

        if (type == ListType::M3u) {
            if (!line.startsWith(QLatin1Char('#')))
                entries << line;
        } else if (type == ListType::Pls) {
            const int eq = line.indexOf(QLatin1Char('='));
            if (line.startsWith(QLatin1String("File")) && eq >= 0)
                entries << line.mid(eq + 1);
        }
    }
    return entries;
}

QString Playlist::resolveEntry(const QString &written, const QString &base)
{
    if (written.isEmpty())
        return {};
    QString entry = written;
    entry.replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (isUrl(entry)) {
        if (isFileUrl(entry))
            return fileUrlPath(entry);
        const QUrl url(entry);
        return url.isLocalFile() ? url.toLocalFile() : entry;
    }
    if (entry.size() >= 2 && entry[1] == QLatin1Char(':') && entry[0].isLetter())
        return resolveRooted(entry.mid(2), base, entry);
    if (written.startsWith(QLatin1Char('\\')))
        return resolveRooted(entry, base, entry);
    if (entry.startsWith(QLatin1Char('/')))
        return entry;
    return base + entry;
}

Playlist::ListFile Playlist::readListFile(const QString &file)
{
    ListFile list;
    list.file = file;
    FileFault fault = FileFault::None;
    if (typeOf(file) == ListType::None) {
        // Nothing is read from it, but only a file names the list.
        QFile in;
        fault = openRegularFile(in, file, QIODevice::ReadOnly);
    } else {
        FileBytes read = readRegularFile(file, kMaxListBytes);
        fault = read.fault;
        list.bytes = std::move(read.bytes);
    }
    list.ok = fault == FileFault::None;
    QString reason;
    switch (fault) {
    case FileFault::None:
    case FileFault::Missing: // its entries would be missing too; nothing to say
        return list;
    case FileFault::NotRegular:
        reason = QStringLiteral("It is not a file but a folder, pipe or device.");
        break;
    case FileFault::TooBig:
        reason = QStringLiteral("It is too big for a playlist.");
        break;
    case FileFault::Unreadable:
        reason = QStringLiteral("Is the file readable?");
        break;
    }
    list.message = QStringLiteral("Unable to read Playlist! ") + reason + QLatin1Char('\r') + file;
    return list;
}

QString Playlist::PlRead(const QString &file)
{
    const ListFile list = readListFile(file);
    if (list.ok)
        PlRead(list);
    return list.message;
}

void Playlist::PlRead(const ListFile &list)
{
    m_state.title = FriendlyName(list.file, friendlyNames);
    m_state.file = list.file;
    const ListType type = typeOf(list.file);
    if (type == ListType::None)
        return;
    const QString base = folderOf(list.file);
    const int room = kMaxEntries - int(m_state.PlPath.size());
    const QStringList entries = readEntries(list.bytes, type, room);
    for (const QString &written : entries) {
        const QString path = resolveEntry(written, base);
        QString shown = written;
        shown.replace(QLatin1Char('\\'), QLatin1Char('/'));
        // A file URL shows as the name it stands for, not its escapes.
        if (isFileUrl(shown))
            shown = path;
        append(markPicture(FriendlyName(shown, friendlyNames), shown), path);
    }
}

namespace {

bool readsBack(const QString &line, const QString &dir, const QString &path)
{
    const QStringList read = Playlist::readEntries(line.toUtf8(), Playlist::ListType::M3u);
    return read.size() == 1 && Playlist::resolveEntry(read.front(), dir) == path;
}

// The line that reads back as path: relative below the list's folder, else
// as it is. A name the reader would change (blanks at either end, a leading
// "#" or byte-order mark, a line break) goes as a file URL.
QString entryFor(const QString &path, const QString &dir)
{
    const QString line = path.startsWith(dir) ? path.mid(dir.size()) : path;
    if (readsBack(line, dir, path) || !path.startsWith(QLatin1Char('/')))
        return line;
    const QString url = fileUrlOf(path);
    return readsBack(url, dir, path) ? url : line;
}

} // namespace

QString Playlist::WritePL(const QString &file) const
{
    const QString dir = folderOf(file);
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly)) {
        QByteArray bytes;
        for (const QString &path : m_state.PlPath) {
            if (path.isEmpty() || path.contains(QLatin1String("**")))
                continue;
            bytes += entryFor(path, dir).toUtf8();
            bytes += "\r\n";
        }
        if (out.write(bytes) == bytes.size() && out.commit())
            return {};
    }
    return QStringLiteral("Unable to write Playlist! Is the file read-only?");
}

int Playlist::PlMoveEntry(int direction, int selectedIndex)
{
    const int size = int(m_state.PlPath.size());
    const int other = selectedIndex + direction;
    if ((direction != 1 && direction != -1) || selectedIndex < 0 || selectedIndex >= size ||
        other < 0 || other >= size || m_state.PlNames.size() != size)
        return selectedIndex;
    m_state.PlNames.swapItemsAt(selectedIndex, other);
    m_state.PlPath.swapItemsAt(selectedIndex, other);
    return other;
}

void Playlist::RemoveEntry(int index)
{
    if (index < 0 || index >= m_state.PlPath.size() || index >= m_state.PlNames.size())
        return;
    m_state.PlNames.removeAt(index);
    m_state.PlPath.removeAt(index);
}

QString Playlist::AddToPlaylist(const QString &path, const QString &display)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        if (scanner)
            scanner->start(path, validExt, friendlyNames);
        else
            FolderScan::scanAll(m_state, path, validExt, friendlyNames);
        return {};
    }
    if (typeOf(path) != ListType::None)
        return PlRead(path);
    append(markPicture(display, path), path);
    if (m_state.CurTrack == 0)
        m_state.CurTrack = 1;
    return {};
}

QString Playlist::folderOf(const QString &file)
{
    return file.left(file.lastIndexOf(QLatin1Char('/')) + 1);
}

QString Playlist::markPicture(const QString &display, const QString &path)
{
    return IsPicture(path) ? display + QStringLiteral(" (picture)") : display;
}

bool Playlist::IsPicture(const QString &path)
{
    const QString tail = path.right(4).toUpper();
    return tail == QLatin1String(".GIF") || tail == QLatin1String(".BMP") ||
           tail == QLatin1String(".JPG");
}

namespace {

// The leading numeric value is above 0: blanks skipped, an optional sign,
// digits with an optional fraction ("0.5x" counts, "-3" and "0" do not).
bool startsWithPositiveNumber(const QString &name)
{
    qsizetype i = 0;
    while (i < name.size() && (name[i] == QLatin1Char(' ') || name[i] == QLatin1Char('\t')))
        ++i;
    bool negative = false;
    if (i < name.size() && (name[i] == QLatin1Char('+') || name[i] == QLatin1Char('-')))
        negative = name[i++] == QLatin1Char('-');
    bool nonZero = false;
    bool seenDot = false;
    for (; i < name.size(); ++i) {
        const QChar c = name[i];
        if (c == QLatin1Char('.') && !seenDot) {
            seenDot = true;
        } else if (c >= QLatin1Char('0') && c <= QLatin1Char('9')) {
            nonZero = nonZero || c != QLatin1Char('0');
        } else {
            break;
        }
    }
    return nonZero && !negative;
}

} // namespace

QString Playlist::FriendlyName(const QString &path, bool friendly)
{
    QString name = path;
    // A length annotation " (mm:ss)" as other lists append it.
    if (name.size() > 8 && name.endsWith(QLatin1Char(')')) &&
        name.at(name.size() - 4) == QLatin1Char(':'))
        name.chop(8);
    name = name.mid(name.lastIndexOf(QLatin1Char('/')) + 1);
    if (friendly) {
        name.replace(QLatin1Char('_'), QLatin1Char(' '));
        for (qsizetype i = 0; i + 5 < name.size(); ++i) {
            if (name[i] == QLatin1Char('.'))
                name[i] = QLatin1Char(' ');
        }
        if (startsWithPositiveNumber(name)) {
            if (name.size() >= 3 && name[2] == QLatin1Char('-'))
                name = name.mid(3);
            else if (name.size() >= 4 && name[2] == QLatin1Char(' ') && name[3] == QLatin1Char('-'))
                name = name.mid(4);
        }
    }
    return name.trimmed();
}
