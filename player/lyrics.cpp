#include "lyrics.h"

#include "id3tag.h"
#include "platform/findfile.h"
#include "platform/readfile.h"
#include "platform/text.h"

#include <QFileInfo>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace {

void addUntimed(LyricsData &d, const QString &text)
{
    d.lines << text;
}

// Lines past the table's end are shown but not timed.
void addTimed(LyricsData &d, qint32 ms, const QString &text)
{
    if (d.timedCount < LyricsData::kMaxTimed) {
        ++d.timedCount;
        d.times[d.timedCount] = ms;
        d.rows[d.timedCount] = int(d.lines.size());
        if (ms > 0)
            d.LyricsLoaded = true;
    }
    d.lines << text;
}

// Whole number of a time field; a value that does not fit counts as no time.
qint64 wholeNumber(QStringView text, qint64 low, qint64 high)
{
    const double v = std::nearbyint(leadingNumber(text));
    return v >= double(low) && v <= double(high) ? qint64(v) : 0;
}

void readNative(LyricsData &d, const QStringList &lines)
{
    for (qsizetype n = 1; n < lines.size(); ++n) {
        const QString &line = lines[n];
        if (line.startsWith(QLatin1Char(':')) && QStringView(line).mid(10, 2) == u": ") {
            const qint64 ms =
                wholeNumber(QStringView(line).mid(1, 9), std::numeric_limits<qint32>::min(),
                            std::numeric_limits<qint32>::max());
            addTimed(d, qint32(ms), line.mid(12));
        } else {
            addUntimed(d, line);
        }
    }
}

void readTimedText(LyricsData &d, const QStringList &lines)
{
    const bool cdFrames = lines.size() > 1 && lines[1].toUpper().startsWith(u"; CD");
    const double unit = cdFrames ? 1000.0 / 75.0 : 100.0;
    for (qsizetype n = 1; n < lines.size(); ++n) {
        const QString &line = lines[n];
        if (line.startsWith(QLatin1Char(';')))
            continue;
        // A 16-bit field: past 32767 units the line is kept as plain text.
        const qint64 units = wholeNumber(QStringView(line).left(9), -32768, 32767);
        if (units < 1)
            addUntimed(d, line);
        else
            addTimed(d, qint32(std::lround(double(units) * unit)), line.mid(9));
    }
}

// "mm:ss", "mm:ss.x", "mm:ss.xx", "mm:ss.xxx" (also with ':' before the
// fraction); -1 when the tag is no time.
qint64 lrcTime(QStringView tag)
{
    qsizetype i = 0;
    auto digits = [&](int most, qint64 &value) {
        const qsizetype begin = i;
        value = 0;
        while (i < tag.size() && i - begin < most && tag[i].isDigit() && tag[i].unicode() < 128)
            value = value * 10 + (tag[i++].unicode() - '0');
        return int(i - begin);
    };
    qint64 minutes = 0, seconds = 0, fraction = 0;
    if (digits(6, minutes) == 0 || i >= tag.size() || tag[i++] != QLatin1Char(':'))
        return -1;
    if (digits(2, seconds) == 0)
        return -1;
    int fractionDigits = 0;
    if (i < tag.size() && (tag[i] == QLatin1Char('.') || tag[i] == QLatin1Char(':'))) {
        ++i;
        fractionDigits = digits(3, fraction);
        if (fractionDigits == 0)
            return -1;
    }
    if (i != tag.size())
        return -1;
    static constexpr int kScale[] = {0, 100, 10, 1};
    return minutes * 60000 + seconds * 1000 + fraction * kScale[fractionDigits];
}

} // namespace

LyricsData readLyr(const QByteArray &bytes)
{
    LyricsData d;
    const QStringList lines = splitLines(decodeText(bytes));
    if (lines.isEmpty())
        return d;
    const QString first = lines[0].toUpper();
    if (first.startsWith(u"; TITLE"))
        readTimedText(d, lines);
    else if (first.startsWith(u"VELTO LYRIC"))
        readNative(d, lines);
    else
        d.lines = lines; // no header: plain words, nothing timed
    return d;
}

LyricsData readLrc(const QByteArray &bytes)
{
    struct Entry
    {
        qint64 ms;
        QString text;
    };
    std::vector<Entry> entries;
    QStringList plain;
    qint64 offset = 0;
    for (const QString &line : splitLines(decodeText(bytes))) {
        QStringView rest(line);
        std::vector<qint64> times;
        bool otherTag = false;
        while (rest.startsWith(QLatin1Char('['))) {
            const qsizetype close = rest.indexOf(QLatin1Char(']'));
            if (close < 0)
                break;
            const QStringView tag = rest.mid(1, close - 1);
            const qint64 ms = lrcTime(tag);
            if (ms >= 0) {
                times.push_back(ms);
            } else if (times.empty()) {
                if (tag.startsWith(u"offset:", Qt::CaseInsensitive))
                    offset = qint64(std::clamp(leadingNumber(tag.mid(7)), -1e9, 1e9));
                otherTag = true;
                break;
            } else {
                break; // text that merely begins with brackets
            }
            rest = rest.mid(close + 1);
        }
        if (otherTag)
            continue;
        const QString text = rest.trimmed().toString();
        if (times.empty()) {
            if (!text.isEmpty())
                plain << text;
            continue;
        }
        for (const qint64 ms : times)
            entries.push_back({ms, text});
    }

    LyricsData d;
    if (entries.empty()) {
        d.lines = plain; // no time at all: show the words as they are
        return d;
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &a, const Entry &b) { return a.ms < b.ms; });
    for (const Entry &e : entries) {
        // A positive offset shows the words sooner. Every tagged line keeps a
        // time, even one pulled before the start (0 would mean "no time").
        const qint64 ms = std::clamp<qint64>(e.ms - offset, 1, std::numeric_limits<qint32>::max());
        addTimed(d, qint32(ms), e.text);
    }
    return d;
}

LyricsData LoadLyrics(const QString &path)
{
    // Lyrics of a whole opera fit in a few hundred kilobytes.
    const FileBytes in = readRegularFile(path, 16 * 1024 * 1024);
    if (in.fault != FileFault::None) {
        LyricsData d;
        d.lines << QStringLiteral("No Lyrics");
        return d;
    }
    const QByteArray &bytes = in.bytes;
    return path.endsWith(u".lrc", Qt::CaseInsensitive) ? readLrc(bytes) : readLyr(bytes);
}

QString lyricsFileFor(const QString &mediaPath)
{
    const QFileInfo media(mediaPath);
    const QString folder = media.path();
    const QString name = media.fileName();
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    const QString base = dot < 0 ? name : name.left(dot);
    const QString lyr = base + QStringLiteral(".lyr");
    const QString found = firstExistingNoCase(folder, {lyr, base + QStringLiteral(".lrc")});
    return found.isEmpty() ? folder + QLatin1Char('/') + lyr : found;
}

LyricStep PlayLyrics(const LyricsData &lyrics, qint64 positionMs, int line)
{
    auto time = [&](int k) -> qint64 {
        return k >= 0 && k <= LyricsData::kMaxTimed ? lyrics.times[k] : 0;
    };
    auto row = [&](int k) { return k >= 1 && k <= lyrics.timedCount ? lyrics.rows[k] : -1; };

    if (time(line) == 0)
        return {line, -1};
    if (positionMs >= time(line) && positionMs <= time(line + 2)) {
        if (positionMs < time(line + 1))
            return {line, -1};
        return {line + 1, row(line + 1)};
    }
    // After a seek: the last line already begun (the last of lines sharing a
    // time, as stepping would reach), or the first one still to come.
    int found = -1, upcoming = -1;
    for (int k = 1; k <= lyrics.timedCount; ++k) {
        const qint64 t = lyrics.times[k];
        if (t <= 0)
            continue;
        if (t <= positionMs)
            found = k;
        else if (upcoming < 0)
            upcoming = k;
    }
    if (found < 0)
        found = upcoming;
    if (found < 0)
        return {line, -1};
    return {found, row(found)};
}

LyricJump lyricsDoubleClick(const LyricsData &lyrics, int row)
{
    if (row < -1 || row >= LyricsData::kMaxTimed)
        return {};
    const qint32 t = lyrics.times[row + 1];
    return {t > 0 ? t : -1, row + 1};
}
