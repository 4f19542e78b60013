#include "streamplaylist.h"

#include "platform/streamtext.h"
#include "platform/text.h"

#include <QRegularExpression>

#include <map>

namespace {

QUrl resolved(const QString &entry, const QUrl &base)
{
    const QUrl url(entry);
    return base.isValid() ? base.resolved(url) : url;
}

QStringList plsEntries(const QStringList &lines, const QUrl &base)
{
    static const QRegularExpression fileKey(QStringLiteral("^\\s*file(\\d{1,9})\\s*=(.*)$"),
                                            QRegularExpression::CaseInsensitiveOption);
    std::map<qint64, QString> byNumber;
    for (const QString &line : lines) {
        const QRegularExpressionMatch m = fileKey.match(line);
        const QString value = m.captured(2).trimmed();
        if (m.hasMatch() && !value.isEmpty())
            byNumber.try_emplace(m.captured(1).toLongLong(), value);
    }
    QStringList entries;
    for (const auto &[number, value] : byNumber) {
        if (entries.size() >= kMaxStreamPlaylistEntries)
            break;
        entries << resolved(value, base).toString();
    }
    return entries;
}

bool isPls(const QStringList &lines)
{
    static const QRegularExpression fileKey(QStringLiteral("^\\s*file\\d+\\s*="),
                                            QRegularExpression::CaseInsensitiveOption);
    for (const QString &line : lines) {
        if (line.trimmed().compare(QLatin1String("[playlist]"), Qt::CaseInsensitive) == 0 ||
            fileKey.match(line).hasMatch())
            return true;
    }
    return false;
}

} // namespace

QStringList streamPlaylistEntries(QByteArrayView bytes, const QUrl &base)
{
    const QStringList lines = splitLines(decodeText(bytes));
    if (isPls(lines))
        return plsEntries(lines, base);
    QStringList entries;
    for (const QString &line : lines) {
        const QString entry = line.trimmed();
        if (entry.isEmpty() || entry.startsWith(QLatin1Char('#')))
            continue;
        entries << resolved(entry, base).toString();
        if (entries.size() >= kMaxStreamPlaylistEntries)
            break;
    }
    return entries;
}

bool isStreamPlaylistAddress(const QString &address)
{
    if (!isNetworkAddress(address))
        return false;
    const QString path = QUrl(address).path();
    return path.endsWith(QLatin1String(".pls"), Qt::CaseInsensitive) ||
           path.endsWith(QLatin1String(".m3u"), Qt::CaseInsensitive);
}

QStringList stationPlaylist(QByteArrayView bytes, const QUrl &base)
{
    const QStringList entries = streamPlaylistEntries(bytes, base);
    for (const QString &entry : entries) {
        if (!isNetworkAddress(entry))
            return {};
    }
    return entries;
}
