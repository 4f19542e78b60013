#include "mixer.h"

#include "platform/dialogs.h"

#include <QProcess>
#include <QStandardPaths>

Mixer::Mixer(Dialogs &dialogs, QString searchPath)
    : m_dialogs(dialogs), m_searchPath(std::move(searchPath))
{
}

std::optional<Mixer::Program> Mixer::findMixer(const QString &searchPath)
{
    // An empty entry would mean the current folder; a mixer is never looked for there.
    const QStringList folders = searchPath.split(QLatin1Char(':'), Qt::SkipEmptyParts);
    if (folders.isEmpty())
        return std::nullopt;
    const auto find = [&folders](const char *name) {
        return QStandardPaths::findExecutable(QLatin1String(name), folders);
    };
    for (const char *name : {"pavucontrol", "pavucontrol-qt"}) {
        const QString found = find(name);
        if (!found.isEmpty())
            return Program{found, {}};
    }
    const QString gnome = find("gnome-control-center");
    if (!gnome.isEmpty())
        return Program{gnome, {QStringLiteral("sound")}};
    const QString alsamixer = find("alsamixer");
    if (alsamixer.isEmpty())
        return std::nullopt;
    for (const char *terminal : {"x-terminal-emulator", "xterm"}) {
        const QString found = find(terminal);
        if (!found.isEmpty())
            return Program{found, {QStringLiteral("-e"), alsamixer}};
    }
    return std::nullopt;
}

void Mixer::ShowMixer()
{
    const std::optional<Program> mixer = findMixer(m_searchPath);
    if (!mixer) {
        m_dialogs.message(QStringLiteral("No volume mixer was found.\r"
                                         "Install pavucontrol (or pavucontrol-qt, GNOME's sound "
                                         "settings, or alsamixer and a terminal) to set the "
                                         "volume of your sound devices."));
        return;
    }
    if (!QProcess::startDetached(mixer->program, mixer->arguments))
        m_dialogs.message(QStringLiteral("The volume mixer could not be started:\r") +
                          mixer->program);
}
