#include "skindir.h"

#include "skintokenizer.h"

#include "platform/readfile.h"
#include "platform/text.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cctype>

namespace {

const QString kSeparator = QStringLiteral(" > ");
// The header's two fields fit in far less; a longer first line is cut here,
// so a skin whose first line runs for megabytes costs no more than others.
constexpr qint64 kHeaderBytes = 64 * 1024;
constexpr qint64 kChunk = 4096;

// Blank lines (and a byte order mark) may come before the header line.
QByteArray firstLine(QFile &file)
{
    QByteArray bytes;
    while (bytes.size() < kHeaderBytes) {
        const QByteArray chunk = file.read(std::min(kChunk, kHeaderBytes - bytes.size()));
        if (chunk.isEmpty())
            break;
        bytes += chunk;
        qsizetype i = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
        while (i < bytes.size() && std::isspace(static_cast<unsigned char>(bytes[i])))
            ++i;
        if (i < bytes.size() && (bytes.indexOf('\n', i) >= 0 || bytes.indexOf('\r', i) >= 0))
            break;
    }
    return bytes;
}

} // namespace

SkinDirHeader parseSkinDirHeader(QByteArrayView firstLine)
{
    SkinDirHeader h;
    SkinTokenizer fields(decodeText(firstLine));
    const QString first = fields.next().value_or(QString());
    if (fields.lastEnd() == SkinTokenizer::FieldEnd::Comma)
        h.displayName = fields.fieldHere();
    if (first.toUpper() == QLatin1String("NE-ORB SKIN")) {
        h.signature = first;
        h.type = QStringLiteral("PLAYER");
        h.predecessor = true;
        return h;
    }
    const qsizetype slash = first.indexOf(QLatin1Char('/'));
    h.signature = slash >= 0 ? first.first(slash) : first;
    if (slash >= 0)
        h.type = first.sliced(slash + 1);
    // An older skin that names its modes still loads as one.
    h.predecessor = h.signature == QLatin1String("Ne-Orb Skin");
    return h;
}

bool skinListed(const SkinDirHeader &header, const QString &filter, bool favourite)
{
    if (header.signature != QLatin1String("Velto Skin") && !header.predecessor)
        return false;
    if (filter == QLatin1String("ALL"))
        return true;
    if (favourite && filter == QLatin1String("FAVORITE"))
        return true;
    // An empty filter would be found in every type; no entry of the list is empty.
    return !filter.isEmpty() && header.type.toUpper().contains(filter);
}

QString skinEntry(const QString &fileName, const QString &displayName)
{
    QString name = fileName;
    if (name.endsWith(QLatin1String(".skin"), Qt::CaseInsensitive))
        name.chop(5);
    return name.toUpper() + kSeparator + displayName;
}

QString skinFileOfEntry(const QString &entry)
{
    const qsizetype cut = entry.indexOf(kSeparator);
    return (cut >= 0 ? entry.first(cut) : entry) + QStringLiteral(".skin");
}

const QStringList &skinTypeFilters()
{
    static const QStringList types = {
        QStringLiteral("All"),     QStringLiteral("Favorite"),   QStringLiteral("Player"),
        QStringLiteral("Karaoke"), QStringLiteral("Browser"),    QStringLiteral("WebRadio"),
        QStringLiteral("FMTuner"), QStringLiteral("Calculator"), QStringLiteral("Notepad"),
        QStringLiteral("Clock"),   QStringLiteral("Screensaver")};
    return types;
}

QString skinPathKey(const QString &path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

QList<SkinDirEntry> ReadSkinDir(const QString &folder, const QString &filter,
                                const QSet<QString> &favourites)
{
    QList<SkinDirEntry> entries;
    const QDir dir(folder);
    // Sorted, so the list reads the same on every file system.
    const QStringList names =
        dir.entryList({QStringLiteral("*.skin")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
    for (const QString &name : names) {
        const QString path = dir.filePath(name);
        QFile file;
        // Unreadable files, and pipes or devices named like skins, are left out.
        if (openRegularFile(file, path, QIODevice::ReadOnly) != FileFault::None)
            continue;
        const SkinDirHeader header = parseSkinDirHeader(firstLine(file));
        const bool favourite = !favourites.isEmpty() && favourites.contains(skinPathKey(path));
        if (skinListed(header, filter, favourite))
            entries.push_back({skinEntry(name, header.displayName), path});
    }
    return entries;
}
