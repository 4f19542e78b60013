#include "webstation.h"

WebStation readStationLine(const QString &line)
{
    WebStation station;
    const qsizetype at = line.indexOf(QLatin1Char('@'));
    if (at >= 0) {
        station.name = line.left(at).trimmed();
        station.location = line.mid(at + 1).trimmed();
    }
    if (station.name.isEmpty())
        station.name = QStringLiteral("Unnamed Station");
    return station;
}

QString stationLine(const WebStation &station)
{
    return station.name + QStringLiteral(" @") + station.location;
}
