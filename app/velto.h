#pragma once

#include "app/frmicon.h"
#include "app/frmneorb.h"
#include "app/frmprefs.h"
#include "app/popupmenu.h"
#include "cd/cdpart.h"
#include "core/clocktick.h"
#include "core/dispatcher.h"
#include "core/lifecycle.h"
#include "core/lightboard.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "platform/httpfetch.h"
#include "platform/linuxcddrive.h"
#include "platform/mediadevicefactory.h"
#include "platform/printer.h"
#include "platform/serialport.h"
#include "platform/webviewfactory.h"
#include "player/playerpart.h"
#include "player/startfiles.h"
#include "radio/fmtuner.h"
#include "radio/webbrowser.h"
#include "radio/webradio.h"
#include "tools/calculator.h"
#include "tools/ledsign.h"
#include "tools/mixer.h"
#include "tools/notepad.h"
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
class Velto : public QObject, private StartWindow, private StartFiles
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
    // A web address or a station's playlist handed over while Velto runs
    // (a later start, the desktop's media controls): switches to the web
    // radio and plays it at once. False for anything that is not a station,
    // which then belongs to the player.
    bool openRadio(const QString &path);
    // Files handed over while Velto runs: the player comes back, whatever
    // mode was shown, and adds them; `play` plays the first at once.
    void openFiles(const QStringList &paths, bool play);

    frmNeOrb &window() { return m_window; }
    SkinLoader &skin() { return m_window.skin(); }
    Settings &settings() { return m_settings; }
    PlaylistState &playlist() { return m_playlist; }
    PlayerPart &player() { return m_player; }
    FmTuner &fmTuner() { return m_fmTuner; }
    WebRadio &webRadio() { return m_webRadio; }
    ClockTick &clockTick() { return m_clockTick; }
    frmIcon &tray() { return m_tray; }
    PopupMenu &menu() { return m_popup; }
    frmSkinBrowse *skinBrowser() const { return m_skinBrowser.get(); }
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

    // StartFiles: web addresses and station playlists go to the web radio,
    // everything else to the player.
    void addOpened(const QString &path) override;
    void playWhenScanned() override;
    void setStartCover(const QString &file) override { m_player.setStartCover(file); }
    QString currentCover() const override { return m_player.currentCover(); }
    quint32 outputLevel() const override { return m_player.outputLevel(); }
    void restoreOutputLevel(quint32 word) override { m_player.restoreOutputLevel(word); }

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
    // The skin a favourite slot of the popup menu names; empty for none.
    QString favouriteSkin(int slot) const;
    // Loads a skin; the file shown afterwards, empty when it was refused.
    QString loadSkin(const QString &file);
    // A skin the user picked: one of the older format is offered for import.
    QString userSkin(const QString &file);
    void ShowPrefs();
    void applyPrefs(const frmPrefs &prefs);
    void switchOn(int preset);
    void switchOff();
    // Shows the skin of a radio mode unless one of its skins is shown already.
    void enterMode(const SkinPart &part, int favouriteSlot);
    // Streams for the web radio; playlist: they come from a station's own
    // playlist rather than a bare address.
    struct Stations
    {
        QStringList streams;
        bool playlist = false;
    };
    // A web address is one stream; a station's own playlist (streams only)
    // its streams. Anything else, a playlist with files among its entries
    // included, is the player's: no streams.
    static Stations radioStreams(const QString &path);
    void playRadio(const Stations &stations);

    Platform m_platform;
    ProgramFolder m_folder;
    Settings m_settings;
    PlaylistState m_playlist;
    ConfigStore m_config;
    frmNeOrb m_window;
    // Loads the media engine module when first needed.
    MediaDeviceFactory m_mediaDevices;
    LinuxCdDrive m_cdDrive;
    QtHttpFetch m_cddbFetch;
    QtSerialPort m_serialPort;
    QtPrinter m_printer{&m_window};
    // Loads the web engine module when the browser mode is first entered.
    WebViewFactory m_webViews;

    PlayerPart m_player;
    QtHttpFetch m_stationFetch;
    FmTuner m_fmTuner;
    WebRadio m_webRadio;
    // What the command line handed to the web radio: it plays once the
    // window is on screen.
    Stations m_radioStart;
    Stopwatches m_stopwatches;
    Mixer m_mixer;
    CdPart m_cd;
    Calculator m_calculator;
    Notepad m_notepad;
    LedSign m_ledSign;
    WebBrowser m_browser;
    ClockTick m_clockTick;
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
