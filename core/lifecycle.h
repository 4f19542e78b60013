#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <QtGlobal>

#include <vector>

class Clock;
class ConfigStore;
class StartFiles;
class SkinPart;
class Dialogs;
class ProgramFolder;
class Random;
class Screens;
struct PlaylistState;
struct Settings;

// What start-up and shut-down ask of the main window itself.
class StartWindow
{
public:
    virtual ~StartWindow() = default;
    virtual QPoint windowPos() const = 0;
    virtual QSize windowSize() const = 0;
    virtual void moveWindow(QPoint pos) = 0;
    virtual void minimiseWindow() = 0;
    virtual void LoadSkin(const QString &file) = 0;
};

// The main window's load (start-up) and unload (shut-down).
class Lifecycle
{
public:
    struct Services
    {
        ConfigStore &config;
        Dialogs &dialogs;
        Random &random;
        Clock &clock;
        Screens &screens;
        const ProgramFolder &folder;
    };

    // The parts start in the order given, once the first skin is shown, and
    // end in the same order at shut-down.
    Lifecycle(Services services, Settings &settings, PlaylistState &playlist, StartWindow &window,
              StartFiles &player, const std::vector<SkinPart *> &parts)
        : m_svc(services), m_settings(settings), m_playlist(playlist), m_window(window),
          m_player(player), m_parts(parts)
    {
    }

    // names: what the command line holds, relative to workingFolder; playNow
    // plays what they name whatever "AutoPlay" says.
    void Load(const QStringList &names, const QString &workingFolder, bool playNow = false);
    // Runs once however often it is asked: closing the window, a signal and the
    // end of the desktop session all end here. interactive is false while the
    // session is ending, when no question may be asked.
    void Unload(bool interactive = true);
    bool unloaded() const { return m_unloaded; }

    void SaveLastState();
    void RestoreLastState();

    // The skin start-up loads: the chosen one, or the default with a message.
    QString startSkin();
    QString defaultSkin() const;

private:
    Services m_svc;
    Settings &m_settings;
    PlaylistState &m_playlist;
    StartWindow &m_window;
    StartFiles &m_player;
    const std::vector<SkinPart *> &m_parts;
    bool m_unloaded = false;
};
