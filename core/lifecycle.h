#pragma once

#include <QPoint>
#include <QSize>
#include <QString>
#include <QtGlobal>

class Clock;
class ConfigStore;
class Dialogs;
class ProgramFolder;
class Random;
class Screens;
struct PlaylistState;
struct Settings;

// What start-up and shut-down ask of the main window and the parts it owns.
// Each mode's loader is reached through here; the window forwards to the part.
class LifecycleHost
{
public:
    virtual ~LifecycleHost() = default;
    virtual QPoint windowPos() const = 0;
    virtual QSize windowSize() const = 0;
    virtual void moveWindow(QPoint pos) = 0;
    virtual void minimiseWindow() = 0;

    virtual void ExDevOut(const QString &text) = 0;
    virtual void createSecondaryWindows() = 0;
    virtual void ClearInf() = 0;
    virtual void LoadSkin(const QString &file) = 0;
    virtual void LoadAutoList(const QString &file) = 0;
    virtual void LoadStations(const QString &file) = 0;
    virtual void LoadWebRadio(const QString &file) = 0;
    virtual void PrepareFmTuner() = 0;
    virtual void LoadCvtFile(const QString &file) = 0;
    virtual void MakeDayStr() = 0;
    virtual void InitTimers() = 0;
    virtual void AddOpened(const QString &path) = 0;
    virtual void PlayIt() = 0;
    virtual QString currentCover() const = 0;
    virtual void SetCover(const QString &file) = 0;
    // Velto's output level as one word; kept between runs, as a sound card
    // keeps its level.
    virtual quint32 outputLevel() const = 0;
    virtual void restoreOutputLevel(quint32 word) = 0;
    virtual void MuteFmTuner() = 0;
    virtual void CloseDevices() = 0;
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

    Lifecycle(Services services, Settings &settings, PlaylistState &playlist, LifecycleHost &host)
        : m_svc(services), m_settings(settings), m_playlist(playlist), m_host(host)
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
    LifecycleHost &m_host;
    bool m_unloaded = false;
};
