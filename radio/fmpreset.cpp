#include "fmpreset.h"

#include "platform/text.h"

#include <algorithm>
#include <cmath>

namespace FmPreset {

qint32 frequency(const QString &line)
{
    // Anything beyond a 32-bit count of tenths is clamped later anyway.
    const double tenths = std::clamp(leadingNumber(line) * 10.0, -1e9, 1e9);
    return qint32(std::lround(tenths));
}

QString name(const QString &line)
{
    const qsizetype blank = line.indexOf(QLatin1Char(' '));
    return blank < 0 ? QString() : line.mid(blank + 1);
}

QString stored(qint32 freq)
{
    return QStringLiteral("%1 FM").arg(freq / 10.0, 5, 'f', 1, QLatin1Char('0'));
}

QString renamed(const QString &line, const QString &name)
{
    const qsizetype blank = line.indexOf(QLatin1Char(' '));
    return (blank < 0 ? line : line.left(blank)) + QLatin1Char(' ') + name;
}

QString mhz(qint32 freq)
{
    return QString::number(freq / 10.0, 'f', 1);
}

} // namespace FmPreset
