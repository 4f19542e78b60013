#pragma once

#include "toolcommands.h"

#include <QString>
#include <QStringList>

#include <optional>

class Dialogs;

// Starts the desktop's volume mixer: the first of pavucontrol,
// pavucontrol-qt, GNOME's sound settings and alsamixer (in a terminal) found
// on the search path, as a program of its own that outlives Velto.
class Mixer : public ToolCommands
{
public:
    struct Program
    {
        QString program; // full path
        QStringList arguments;
    };

    // searchPath is a PATH-style list of folders.
    explicit Mixer(Dialogs &dialogs, QString searchPath = qEnvironmentVariable("PATH"));

    void ShowMixer() override;

    static std::optional<Program> findMixer(const QString &searchPath);

private:
    Dialogs &m_dialogs;
    QString m_searchPath;
};
