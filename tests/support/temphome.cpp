#include "temphome.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

TempHome::TempHome() : m_oldConfig(qgetenv("XDG_CONFIG_HOME")), m_oldData(qgetenv("XDG_DATA_HOME"))
{
    qputenv("XDG_CONFIG_HOME", file(QStringLiteral("config")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", file(QStringLiteral("data")).toLocal8Bit());
}

TempHome::~TempHome()
{
    qputenv("XDG_CONFIG_HOME", m_oldConfig);
    qputenv("XDG_DATA_HOME", m_oldData);
}

QString TempHome::write(const QString &relative, const QByteArray &bytes) const
{
    const QString path = file(relative);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile out(path);
    if (out.open(QIODevice::WriteOnly))
        out.write(bytes);
    return path;
}
