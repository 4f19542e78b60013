#include "core/schedule.h"

#include "core/settings.h"
#include "platform/text.h"

namespace {

QString timeField(const QString &time)
{
    return time.left(5).leftJustified(5, QLatin1Char(' '));
}

} // namespace

std::optional<QString> makeEntry(QChar day, const QString &onTime, const QString &offTime,
                                 int preset)
{
    const QString times = timeField(onTime) + QLatin1Char(' ') + timeField(offTime);
    if (times == QLatin1String("00:00 00:00"))
        return std::nullopt;
    return QString(day) + QLatin1Char(' ') + times + QLatin1Char(' ') + twoDigits(preset);
}

QChar entryDay(const QString &entry)
{
    return entry.isEmpty() ? QChar() : entry.front();
}

QString entryOnTime(const QString &entry)
{
    return entry.mid(2, 5);
}

QString entryOffTime(const QString &entry)
{
    return entry.mid(8, 5);
}

int entryPreset(const QString &entry)
{
    return toInt16(leadingNumber(entry.mid(14)));
}

bool entryApplies(const QString &entry, QChar todayLetter)
{
    if (entry.isEmpty() || todayLetter.isNull())
        return false;
    const QChar code = entry.front();
    if (code == QLatin1Char('E'))
        return true;
    if (code == QLatin1Char('D'))
        return QStringLiteral("MTWRF").contains(todayLetter);
    if (code == QLatin1Char('N'))
        return QStringLiteral("US").contains(todayLetter);
    return code == todayLetter;
}
