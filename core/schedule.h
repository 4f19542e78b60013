#pragma once

#include <QChar>
#include <QString>
#include <optional>

// One line of the schedule list, read by character position:
//   1 day code, 3-7 switch-on "hh:mm", 9-13 switch-off "hh:mm", 15- preset "00".
// Blanks separate the fields and are part of the layout.

// The entry the add button appends, or nothing when both times are "00:00":
// such an entry would never switch anything. Times shorter than five
// characters are padded with blanks and longer ones cut, so the fields
// after them stay where the schedule reads them.
std::optional<QString> makeEntry(QChar day, const QString &onTime, const QString &offTime,
                                 int preset);

// Total on any text: a short entry gives what it holds, an empty one a null
// day and preset 0. The preset is the leading number from position 15.
QChar entryDay(const QString &entry);
QString entryOnTime(const QString &entry);
QString entryOffTime(const QString &entry);
int entryPreset(const QString &entry);

// E every day, D Monday to Friday, N Saturday and Sunday, any other code only
// when it is today's letter (U M T W R F S, case-sensitive).
bool entryApplies(const QString &entry, QChar todayLetter);
