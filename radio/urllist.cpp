#include "urllist.h"

#include "platform/readfile.h"
#include "platform/text.h"

#include <QFile>
#include <QSaveFile>

namespace UrlList {

QString withScheme(const QString &url)
{
    return url.left(3).toUpper() == QLatin1String("WWW") ? QStringLiteral("http://") + url : url;
}

bool add(QStringList &list, const QString &url)
{
    if (list.contains(url))
        return false;
    list << url;
    // Index 99, not the oldest: the limit is kept as it always was.
    if (list.size() > kLimit)
        list.removeAt(99);
    return true;
}

QStringList parse(const QByteArray &bytes)
{
    QStringList list;
    for (const QString &line : splitLines(decodeText(bytes))) {
        const QString url = line.trimmed();
        if (url.isEmpty() || url.size() > kMaxLine)
            continue;
        list << url;
        if (list.size() == kLimit)
            break;
    }
    return list;
}

QByteArray format(const QStringList &list)
{
    QByteArray bytes;
    for (const QString &url : list) {
        // One address a line: a line break inside one would split it.
        if (!url.contains(QLatin1Char('\n')) && !url.contains(QLatin1Char('\r')))
            bytes += url.toUtf8() + '\n';
    }
    return bytes;
}

QStringList load(const QString &file)
{
    QFile in;
    if (openRegularFile(in, file, QIODevice::ReadOnly) != FileFault::None)
        return {};
    QByteArray bytes = in.read(kMaxFileBytes);
    // A line cut at the limit is no whole address.
    if (!in.atEnd()) {
        const qsizetype end = std::max(bytes.lastIndexOf('\n'), bytes.lastIndexOf('\r'));
        bytes.truncate(std::max<qsizetype>(end, 0));
    }
    return parse(bytes);
}

bool save(const QString &file, const QStringList &list)
{
    QSaveFile out(file);
    const QByteArray bytes = format(list);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit();
}

} // namespace UrlList
