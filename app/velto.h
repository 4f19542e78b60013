#pragma once

#include "app/frmicon.h"
#include "app/frmneorb.h"
#include "app/frmprefs.h"
#include "app/pendingmodes.h"
#include "app/popupmenu.h"
#include "cd/cdpart.h"
#include "core/clocktick.h"
#include "core/dispatcher.h"
#include "core/lifecycle.h"
#include "core/lightboard.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "platform/httpclient.h"
#include "platform/linuxcddrive.h"
#include "platform/mediadevicefactory.h"
#include "platform/webviewfactory.h"
#include "player/playerpart.h"
#include "radio/webbrowser.h"
#include "tools/mixer.h"
#include "tools/stopwatches.h"

#include <QObject>
#include <QPointer>

#include <memory>

class Clock;
class Dialogs;
class Random;
class Screens;
class SettingsStore;
class frmSkinBrowse;

// The composition root: builds the window and the parts, routes the command
// numbers to the parts that own them, and connects what one part reports to
// the parts that follow it. It also runs the window's own commands (quit,
// minimise, preferences, skins, the menu).
//
// To add a mode: build its part here, route its numbers and start it with
// the others (see docs/architecture.md).
class Velto : public QObject, private StartWindow
{
    Q_OBJECT
public:
    struct Platform
    {
        SettingsStore &store;
        Dialogs &dialogs;
        Clock &clock;
        Random &random;
        Screens &screens;
    };

    Velto(Platform platform, ProgramFolder folder);
    ~Velto() override;

    // Start-up: the command line's names, relative to workingFolder; playNow
    // plays what they name whatever "AutoPlay" says.
    void Load(const QStringList &names, const QString &workingFolder, bool playNow = false);
    // Shut-down without closing, for the end of the desktop session.
    void Unload(bool interactive);
    // Runs a command and shows the lights it may have changed.
    void DoIt(qint16 cmd);
    void LoadSkin(const QString &file) override;

    frmNeOrb &window() { return m_window; }
    SkinLoader &skin() { return m_window.skin(); }
    Settings &settings() { return m_settings; }
    PlaylistState &playlist() { return m_playlist; }
    PlayerPart &player() { return m_player; }
    Stopwatches &stopwatches() { return m_stopwatches; }
    WebBrowser &browser() { return m_browser; }
    ClockTick &clockTick() { return m_clockTick; }
    frmIcon &tray() { return m_tray; }
    PopupMenu &menu() { return m_popup; }
    frmPrefs *prefs() const { return m_prefs; }
    frmSkinBrowse *skinBrowser() const { return m_skinBrowser.get(); }
    const Dispatcher &dispatcher() const { return m_dispatcher; }
    const SkinPart &windowCommands() const { return m_windowCommands; }
    const SkinPart &pendingModes() const { return m_pending; }
    const SkinPart &mixer() const { return m_mixer; }
    CdPart &cd() { return m_cd; }
    const MediaDeviceFactory &mediaDevices() const { return m_mediaDevices; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // StartWindow
    QPoint windowPos() const override { return m_window.pos(); }
    QSize windowSize() const override { return m_window.size(); }
    void moveWindow(QPoint pos) override { m_window.move(pos); }
    void minimiseWindow() override;

    // Registers a part: its command ranges, low <= cmd < high, and its place
    // in start-up, shut-down and the clock's beat.
    void add(SkinPart &part, std::initializer_list<std::pair<int, int>> commands);
    void connectParts();
    void windowCommand(qint16 cmd);
    void SelectSkin();
    void SelFSkin(int slot);
    void ShowSkinBrowser(const QString &typeFilter = {});
    // The folder of the skins: "SkinPath", else the program's skins.
    QString skinFolder() const;
    // Loads a skin; the file shown afterwards, empty when it was refused.
    QString loadSkin(const QString &file);
    // A skin the user picked: one of the older format is offered for import.
    QString userSkin(const QString &file);
    void ShowPrefs();
    void applyPrefs(const frmPrefs &prefs);
    void switchOn();
    void switchOff();
    void shutDown(bool interactive);

    Platform m_platform;
    ProgramFolder m_folder;
    Settings m_settings;
    PlaylistState m_playlist;
    ConfigStore m_config;
    frmNeOrb m_window;
    // Loads the media engine module when first needed.
    MediaDeviceFactory m_mediaDevices;
    LinuxCdDrive m_cdDrive;
    QtHttpClient m_http;
    // Loads the web engine module when the browser mode is first entered.
    WebViewFactory m_webViews;

    PlayerPart m_player;
    Stopwatches m_stopwatches;
    Mixer m_mixer;
    CdPart m_cd;
    WebBrowser m_browser;
    ClockTick m_clockTick;
    PendingModes m_pending;
    // The window's own commands, routed like a part's.
    class WindowCommands : public SkinPart
    {
    public:
        explicit WindowCommands(Velto &velto) : m_velto(velto) {}
        void DoIt(qint16 cmd) override { m_velto.windowCommand(cmd); }

    private:
        Velto &m_velto;
    } m_windowCommands{*this};

    std::vector<SkinPart *> m_parts;
    Dispatcher m_dispatcher;
    LightBoard m_lights;
    Lifecycle m_lifecycle;
    PopupMenu m_popup;
    frmIcon m_tray;
    QPointer<frmPrefs> m_prefs;
    std::unique_ptr<frmSkinBrowse> m_skinBrowser;
};
