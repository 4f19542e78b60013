#include "cdplayerini.h"

#include "platform/text.h"

#include <cmath>

CdPlayerTitles readCdPlayerIni(QByteArrayView ini, const QString &id, int trackCount)
{
    CdPlayerTitles result;
    const QString section = QLatin1Char('[') + id.toUpper() + QLatin1Char(']');
    enum class State { Outside, Inside, Done } state = State::Outside;
    for (const QString &line : splitLines(decodeText(ini))) {
        if (state == State::Done)
            break;
        if (line.startsWith(QLatin1Char('['))) {
            if (state == State::Inside) {
                state = State::Done; // the next section begins
            } else if (line.trimmed().toUpper() == section) {
                state = State::Inside;
                result.found = true;
            }
            continue;
        }
        if (state != State::Inside || line.trimmed().isEmpty())
            continue;
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        if (eq < 0)
            continue;
        const QString key = line.left(eq).toUpper();
        const QString value = line.mid(eq + 1);
        if (key == QLatin1String("ARTIST") || key == QLatin1String("TITLE") ||
            key == QLatin1String("ORDER"))
            continue;
        if (key == QLatin1String("NUMTRACKS")) {
            if (leadingNumber(value) != trackCount) {
                // A number turned into text keeps its leading blank: "( 12 14)".
                result.message = QStringLiteral("Number of Tracks do not match! ( %1 %2)")
                                     .arg(QString::number(trackCount), value);
                state = State::Done;
            }
            continue;
        }
        const double number = std::nearbyint(leadingNumber(key));
        if (number >= 0 && number < trackCount)
            result.titles << qMakePair(int(number), value);
    }
    return result;
}
