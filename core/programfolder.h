#pragma once

#include <QString>

// The folder that holds the skins and the program's data files
// ($XDG_DATA_HOME/velto), seeded from the shipped data at first start.
class ProgramFolder
{
public:
    explicit ProgramFolder(QString path) : m_path(std::move(path)) {}

    const QString &path() const { return m_path; }
    QString file(const QString &name) const { return m_path + QLatin1Char('/') + name; }

    // Creates the folder and copies in every shipped file the user does not
    // have yet. Returns the message to show when the folder cannot be made.
    QString prepare(const QString &shippedData) const;

    static QString defaultPath();
    // The installed data folder beside the executable, else the source tree's.
    static QString shippedDataPath();

private:
    QString m_path;
};
