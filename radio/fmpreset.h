#pragma once

#include <QString>
#include <QtGlobal>

// One line of the FM preset list: the frequency in MHz, a blank, the
// station's name ("101.5 Radio Nova"). A newly stored preset is named after
// its frequency: "088.0 FM".
namespace FmPreset {

// The frequency in tenths of a megahertz from the line's leading number, 0
// when it has none. Not clamped: tuning does that.
qint32 frequency(const QString &line);
// The text after the first blank; empty without one.
QString name(const QString &line);
// The line a preset stored at freq (tenths of a MHz) starts as.
QString stored(qint32 freq);
// The line with its name replaced; a line without a blank gains one.
QString renamed(const QString &line, const QString &name);
// The frequency as the display spells it: "87.5".
QString mhz(qint32 freq);

} // namespace FmPreset
