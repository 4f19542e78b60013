#include "playlist.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTextStream>

namespace {

QString upperExt(const QString &path)
{
    const int dot = path.lastIndexOf(QLatin1Char('.'));
    return (dot < 0 ? path : path.mid(dot + 1)).toUpper();
}

QString folderWithSlash(const QString &file)
{
    const int slash = file.lastIndexOf(QLatin1Char('/'));
    return slash < 0 ? QString() : file.left(slash + 1);
}

} // namespace

void Playlist::PlClear()
{
    m_state.PlNames.clear();
    m_state.PlPath.clear();
    m_state.CurTrack = 1;
    m_state.title = QStringLiteral("untitled");
}

void Playlist::append(const QString &display, const QString &path)
{
    if (m_state.PlPath.size() >= kMaxEntries)
        return;
    m_state.PlNames << display + (IsPicture(path) ? QStringLiteral(" (picture)") : QString());
    m_state.PlPath << path;
}

void Playlist::PlRead(const QString &file)
{
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    m_state.title = FriendlyName(file, friendlyNames);
    const QString base = folderWithSlash(file);
    const QString type = upperExt(file);
    QTextStream text(&in);
    while (!text.atEnd()) {
        const QString line = text.readLine().trimmed();
        QString entry;
        if (type == QLatin1String("M3U") || type == QLatin1String("M3U8")) {
            if (line.startsWith(QLatin1Char('#')))
                continue;
            entry = line;
        } else if (type == QLatin1String("PLS")) {
            const int eq = line.indexOf(QLatin1Char('='));
            if (!line.startsWith(QLatin1String("File")) || eq < 0)
                continue;
            entry = line.mid(eq + 1);
        } else {
            return;
        }
        const QString path = entry.startsWith(QLatin1Char('/')) ? entry : base + entry;
        append(FriendlyName(entry, friendlyNames), path);
    }
}

QString Playlist::WritePL(const QString &file) const
{
    const QString dir = folderWithSlash(file);
    QSaveFile out(file);
    if (out.open(QIODevice::WriteOnly)) {
        QByteArray bytes;
        for (const QString &path : m_state.PlPath) {
            if (path.isEmpty() || path.contains(QLatin1String("**")))
                continue;
            const QString line = !dir.isEmpty() && path.startsWith(dir) ? path.mid(dir.size()) : path;
            bytes += line.toUtf8() + "\r\n";
        }
        if (out.write(bytes) == bytes.size() && out.commit())
            return {};
    }
    return QStringLiteral("Unable to write Playlist! Is the file read-only?");
}

void Playlist::AddOpened(const QString &path)
{
    const QString ext = upperExt(path);
    if (ext == QLatin1String("M3U") || ext == QLatin1String("M3U8") || ext == QLatin1String("PLS")) {
        PlRead(path);
        return;
    }
    if (QFileInfo(path).isDir())
        return; // folder scans arrive with the playlist work
    append(FriendlyName(path, friendlyNames), path);
    if (m_state.CurTrack == 0)
        m_state.CurTrack = 1;
}

bool Playlist::IsPicture(const QString &path)
{
    const QString tail = path.right(4).toUpper();
    return tail == QLatin1String(".GIF") || tail == QLatin1String(".BMP") ||
           tail == QLatin1String(".JPG");
}

QString Playlist::FriendlyName(const QString &path, bool friendly)
{
    QString name = path;
    if (name.size() > 8 && name.endsWith(QLatin1Char(')')) &&
        name.at(name.size() - 3) == QLatin1Char(':'))
        name.chop(8);
    name = name.mid(name.lastIndexOf(QLatin1Char('/')) + 1);
    if (friendly) {
        name.replace(QLatin1Char('_'), QLatin1Char(' '));
        for (int i = 0; i < name.size(); ++i) {
            if (name[i] == QLatin1Char('.') && name.size() - i - 1 >= 5)
                name[i] = QLatin1Char(' ');
        }
        int lead = 0;
        while (lead < name.size() && name[lead].isDigit())
            ++lead;
        if (name.left(lead).toInt() > 0) {
            if (name.size() >= 3 && name[2] == QLatin1Char('-'))
                name = name.mid(3);
            else if (name.size() >= 4 && name.mid(2, 2) == QLatin1String(" -"))
                name = name.mid(4);
        }
    }
    return name.trimmed();
}
