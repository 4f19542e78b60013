#pragma once

#include <QString>

// A web radio station as "webradio.txt" holds it: name + " @" + location.
struct WebStation
{
    QString name;
    QString location;

    bool operator==(const WebStation &) const = default;
};

// Splits at the first "@", trimming both sides; a line without "@" has no
// name and no location, and a station without a name is "Unnamed Station".
// The edit field uses the same rule.
WebStation readStationLine(const QString &line);
QString stationLine(const WebStation &station);
