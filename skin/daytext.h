#pragma once

#include <QChar>
#include <QDate>
#include <QString>

// The clock's day texts: day "Mon", date "Nov 23", and the weekday letter
// the schedule matches its day codes against (U M T W R F S, Sunday first).
struct DayText
{
    QString day;
    QString date;
    QChar todayLetter;
};

// An invalid date gives empty texts and a null letter, which no day code matches.
DayText MakeDayStr(const QDate &date);
