#pragma once

#include <QProcess>
#include <QString>

// The text of a PDF file as pdftotext reads it (pages end with a form feed),
// or empty when the file is no PDF it can read.
inline QString pdfText(const QString &file)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"),
            {QStringLiteral("-enc"), QStringLiteral("UTF-8"), file, QStringLiteral("-")});
    if (!p.waitForFinished(30000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
        return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}
