#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QString>

// Resident memory of a running process in MiB, from /proc; -1 when gone.
inline double residentMiB(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() / 1024.0;
    return -1;
}
