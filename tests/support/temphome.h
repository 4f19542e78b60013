#pragma once

#include "printers.h"

#include <QString>
#include <QTemporaryDir>

// Points XDG_CONFIG_HOME and XDG_DATA_HOME at a fresh temporary folder for the
// life of the object, so no test touches a real home.
class TempHome
{
public:
    TempHome();
    ~TempHome();

    QString path() const { return m_dir.path(); }
    QString file(const QString &relative) const { return m_dir.path() + '/' + relative; }

    // Writes bytes to a file below the home, making its folders.
    QString write(const QString &relative, const QByteArray &bytes) const;

private:
    QTemporaryDir m_dir;
    QByteArray m_oldConfig, m_oldData;
};
