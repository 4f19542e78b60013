#pragma once

#include "skin/skinpart.h"

#include <QString>
#include <QStringList>

#include <optional>

class Dialogs;

// Starts the desktop's volume mixer: the first of pavucontrol,
// pavucontrol-qt, GNOME's sound settings and alsamixer (in a terminal) found
// on the search path, as a program of its own that outlives Velto.
class Mixer : public SkinPart
{
public:
    struct Program
    {
        QString program; // full path
        QStringList arguments;
    };

    // searchPath is a PATH-style list of folders.
    explicit Mixer(Dialogs &dialogs, QString searchPath = qEnvironmentVariable("PATH"));

    // Command 29.
    void DoIt(qint16) override { ShowMixer(); }
    void ShowMixer();

    static std::optional<Program> findMixer(const QString &searchPath);

private:
    Dialogs &m_dialogs;
    QString m_searchPath;
};
