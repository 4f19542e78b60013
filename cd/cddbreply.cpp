#include "cddbreply.h"

#include <QStringDecoder>

QString decodeCddbReply(QByteArrayView bytes)
{
    QString text;
    text.reserve(bytes.size());
    qsizetype start = 0;
    while (start < bytes.size()) {
        qsizetype end = bytes.indexOf('\n', start);
        end = end < 0 ? bytes.size() : end + 1;
        const QByteArrayView line = bytes.sliced(start, end - start);
        QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString decoded = utf8.decode(line);
        text += utf8.hasError() ? QString::fromLatin1(line) : decoded;
        start = end;
    }
    return text;
}

QString CDDBField(const QString &reply, const QString &key)
{
    const QString marker = key + QLatin1Char('=');
    const qsizetype at = reply.indexOf(marker);
    if (at < 0)
        return QString();
    const qsizetype from = at + marker.size();
    const qsizetype cr = reply.indexOf(QLatin1Char('\r'), from);
    return cr < 0 ? QString() : reply.mid(from, cr - from);
}

CddbMatch readQueryReply(const QString &reply)
{
    CddbMatch match;
    const qsizetype found = reply.indexOf(QLatin1String("200 "));
    if (found >= 0) {
        match.kind = CddbMatch::Kind::Found;
        const qsizetype from = found + 4;
        const qsizetype blank = reply.indexOf(QLatin1Char(' '), from);
        match.category = reply.mid(from, blank < 0 ? -1 : blank - from);
    } else if (reply.contains(QLatin1String("201 "))) {
        match.kind = CddbMatch::Kind::Multiple;
    }
    return match;
}

// CDDBField for every track at once, in one pass over the reply: asked track
// by track, a megabyte of garbage would be searched 99 times over.
QStringList trackTitles(const QString &reply, int trackCount)
{
    static const QString key = QStringLiteral("TTITLE");
    QList<qsizetype> valueAt(trackCount, -1); // where each track's first value begins
    for (qsizetype at = reply.indexOf(key); at >= 0; at = reply.indexOf(key, at + 1)) {
        qsizetype end = at + key.size();
        while (end < reply.size() && reply[end] >= QLatin1Char('0') &&
               reply[end] <= QLatin1Char('9') && end - at - key.size() < 3)
            ++end;
        const QStringView digits = QStringView(reply).mid(at + key.size(), end - at - key.size());
        // "TTITLE01=" is no track's key: numbers are written without zeros in front.
        if (digits.isEmpty() || (digits.size() > 1 && digits[0] == QLatin1Char('0')) ||
            end >= reply.size() || reply[end] != QLatin1Char('='))
            continue;
        const int track = digits.toInt();
        if (track < trackCount && valueAt[track] < 0)
            valueAt[track] = end + 1;
    }
    QStringList titles;
    for (int i = 0; i < trackCount; ++i) {
        const qsizetype from = valueAt[i];
        const qsizetype cr = from < 0 ? -1 : reply.indexOf(QLatin1Char('\r'), from);
        titles << (cr < 0 ? QString() : reply.mid(from, cr - from));
    }
    return titles;
}

CddbDiscEntry readDiscReply(const QString &reply, int trackCount)
{
    CddbDiscEntry entry;
    entry.titles = trackTitles(reply, qMax(0, trackCount));
    const QString disc = CDDBField(reply, QStringLiteral("DTITLE")).trimmed();
    const qsizetype slash = disc.indexOf(QLatin1String(" / "));
    // Without the separator the one name is the artist's and the album's.
    entry.artist = (slash < 0 ? disc : disc.left(slash)).trimmed();
    entry.album = (slash < 0 ? disc : disc.mid(slash + 3)).trimmed();
    return entry;
}
