#include "skin/daytext.h"

#include "platform/text.h"

DayText MakeDayStr(const QDate &date)
{
    static const QString days = QStringLiteral("SunMonTueWedThuFriSat");
    static const QString months = QStringLiteral("JanFebMarAprMayJunJulAugSepOctNovDec");
    static const QString letters = QStringLiteral("UMTWRFS");
    DayText text;
    if (!date.isValid())
        return text;
    // Weekday numbers run from 1 on Sunday; Qt counts from Monday.
    const int weekday = date.dayOfWeek() % 7 + 1;
    text.day = days.mid((weekday - 1) * 3, 3);
    text.todayLetter = letters.at(weekday - 1);
    text.date = months.mid((date.month() - 1) * 3, 3) + QLatin1Char(' ') + twoDigits(date.day());
    return text;
}
