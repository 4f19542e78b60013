#include "stationfile.h"

#include "platform/readfile.h"
#include "platform/text.h"

#include <QFileInfo>
#include <QSaveFile>

QStringList stationFileLines(QByteArrayView bytes)
{
    return splitLines(decodeText(bytes));
}

QByteArray stationFileBytes(const QStringList &lines)
{
    QByteArray bytes;
    for (const QString &line : lines) {
        bytes += line.toUtf8();
        bytes += '\n';
    }
    return bytes;
}

StationFile readStationFile(const QString &path)
{
    StationFile file;
    const FileBytes in = readRegularFile(path, kMaxStationFileBytes);
    if (in.fault == FileFault::None)
        file.lines = stationFileLines(in.bytes);
    else if (in.fault != FileFault::Missing)
        file.problem = QStringLiteral("%1 is %2; Velto leaves it as it is.")
                           .arg(QFileInfo(path).fileName(), QLatin1String(faultText(in.fault)));
    return file;
}

bool writeStationFile(const QString &path, const QStringList &lines)
{
    const QByteArray bytes = stationFileBytes(lines);
    QSaveFile out(path);
    return out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size() && out.commit();
}
