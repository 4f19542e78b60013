#include "cuesheet.h"

#include "text.h"

#include <QStringList>

namespace {

// Words split at blanks; a double-quoted word keeps its blanks and loses its
// quotes. An unclosed quote runs to the end of the line.
QStringList words(QStringView line)
{
    QStringList out;
    QString word;
    bool quoted = false, inWord = false;
    for (const QChar c : line) {
        if (c == QLatin1Char('"')) {
            quoted = !quoted;
            inWord = true;
        } else if (!quoted && c.isSpace()) {
            if (inWord)
                out << word;
            word.clear();
            inWord = false;
        } else {
            word += c;
            inWord = true;
        }
    }
    if (inWord)
        out << word;
    return out;
}

// The text after the keyword: one quoted word, or the unquoted rest of the line.
QString rest(const QStringList &w)
{
    return w.mid(1).join(QLatin1Char(' '));
}

int twoDigitNumber(QStringView text)
{
    bool ok = false;
    const int n = text.toInt(&ok);
    return ok && text.size() <= 3 && n >= 0 ? n : -1;
}

} // namespace

qint32 cueTime(QStringView text)
{
    const QList<QStringView> parts = text.split(QLatin1Char(':'));
    if (parts.size() != 3)
        return -1;
    for (QStringView p : parts) {
        if (p.isEmpty() || p.size() > 3)
            return -1;
        for (QChar c : p)
            if (c.unicode() < '0' || c.unicode() > '9')
                return -1;
    }
    const int minutes = parts[0].toInt(), seconds = parts[1].toInt(), frames = parts[2].toInt();
    if (seconds >= 60 || frames >= 75)
        return -1;
    return (minutes * 60 + seconds) * 75 + frames;
}

CueSheet parseCueSheet(QByteArrayView bytes)
{
    CueSheet sheet;
    for (const QString &line : splitLines(decodeText(bytes))) {
        const QStringList w = words(line);
        if (w.isEmpty())
            continue;
        const QString keyword = w[0].toUpper();
        CueSheet::Track *track = sheet.tracks.isEmpty() ? nullptr : &sheet.tracks.last();
        if (keyword == QLatin1String("FILE") && w.size() >= 2) {
            sheet.files << CueSheet::File{w[1], w.value(2).toUpper()};
        } else if (keyword == QLatin1String("TRACK") && w.size() >= 2) {
            CueSheet::Track t;
            t.number = twoDigitNumber(w[1]);
            t.type = w.value(2).toUpper();
            t.file = int(sheet.files.size()) - 1;
            sheet.tracks << t;
        } else if (keyword == QLatin1String("INDEX") && track && w.size() >= 3) {
            // Index 0 is the pause before a track; the track starts at index 1.
            if (twoDigitNumber(w[1]) == 1 && track->start < 0)
                track->start = cueTime(w[2]);
        } else if (keyword == QLatin1String("TITLE")) {
            (track ? track->title : sheet.title) = rest(w);
        } else if (keyword == QLatin1String("PERFORMER")) {
            (track ? track->performer : sheet.performer) = rest(w);
        }
    }
    return sheet;
}

QString cueSheetProblem(const CueSheet &sheet, qint64 imageBytes)
{
    if (sheet.files.isEmpty())
        return QStringLiteral("The cue sheet names no image file.");
    if (sheet.files.size() > 1)
        return QStringLiteral("The cue sheet names %1 files; Velto plays images kept in one "
                              "file.")
            .arg(sheet.files.size());
    const CueSheet::File &file = sheet.files.first();
    if (file.type != QLatin1String("BINARY"))
        return QStringLiteral("The image file %1 is of type %2; Velto plays raw images "
                              "(type BINARY) only.")
            .arg(file.name, file.type.isEmpty() ? QStringLiteral("none") : file.type);
    if (sheet.tracks.isEmpty())
        return QStringLiteral("The cue sheet holds no track.");
    if (sheet.tracks.size() > CueSheet::kMaxTracks)
        return QStringLiteral("The cue sheet holds %1 tracks; a CD holds 99 at most.")
            .arg(sheet.tracks.size());
    const CueSheet::Track *before = nullptr;
    for (const CueSheet::Track &t : sheet.tracks) {
        const QString number = t.number >= 0 ? QString::number(t.number) : QStringLiteral("?");
        if (t.number < 1 || t.number > CueSheet::kMaxTracks ||
            (before && t.number != before->number + 1))
            return QStringLiteral("Track %1 is out of order: the tracks of a CD are numbered "
                                  "1 to 99, one after the other.")
                .arg(number);
        if (t.file != 0)
            return QStringLiteral("Track %1 comes before the image file is named.").arg(number);
        if (t.type != QLatin1String("AUDIO") && t.type != QLatin1String("MODE1/2352") &&
            t.type != QLatin1String("MODE2/2352"))
            return QStringLiteral("Track %1 is of type %2; Velto reads images of 2352-byte "
                                  "sectors only.")
                .arg(number, t.type.isEmpty() ? QStringLiteral("none") : t.type);
        if (t.start < 0)
            return QStringLiteral("Track %1 has no start (INDEX 01).").arg(number);
        if (before && t.start <= before->start)
            return QStringLiteral("Track %1 starts at or before the start of track %2.")
                .arg(number)
                .arg(before->number);
        before = &t;
    }
    if (imageBytes < 0)
        return QStringLiteral("The image file %1 was not found.").arg(file.name);
    if (imageBytes / CueSheet::kSectorBytes <= sheet.tracks.last().start)
        return QStringLiteral("The image file %1 ends before track %2 begins: it is cut short.")
            .arg(file.name)
            .arg(sheet.tracks.last().number);
    return QString();
}
