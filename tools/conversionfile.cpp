#include "conversionfile.h"

#include "platform/text.h"

ConversionFile readConversionFile(QByteArrayView bytes, const QString &name)
{
    ConversionFile file;
    if (bytes.contains('\0')) {
        file.isText = false;
        file.messages << name + QStringLiteral(" is not a conversion file: it is not text.");
        return file;
    }
    int tooLong = 0;
    for (const QString &line : splitLines(decodeText(bytes))) {
        if (line.trimmed().isEmpty())
            continue;
        if (line.size() > kMaxConversionLine) {
            ++tooLong;
            continue;
        }
        file.lines << line;
    }
    if (tooLong > 0)
        file.messages << QStringLiteral("%1 line(s) of %2 are too long for a conversion and were "
                                        "left out.")
                             .arg(tooLong)
                             .arg(name);
    return file;
}

Conversion parseConversion(const QString &line)
{
    Conversion c;
    const qsizetype first = line.indexOf(QLatin1Char(','));
    c.name = first < 0 ? line : line.left(first);
    if (first < 0)
        return c;
    c.valid = true;
    const QStringView rest = QStringView(line).mid(first + 1);
    c.factor = leadingNumber(rest);
    const qsizetype second = rest.indexOf(QLatin1Char(','));
    if (second >= 0)
        c.offset = leadingNumber(rest.mid(second + 1));
    return c;
}
