#pragma once

#include "core/lifecycle.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "player/playlist.h"

#include <QWidget>
#include <memory>

class Clock;
class Dialogs;
class Random;
class Screens;
class SettingsStore;

// The main window: owns the parts of the program and forwards to them.
class frmNeOrb : public QWidget, public LifecycleHost
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

    frmNeOrb(Platform platform, ProgramFolder folder, QWidget *parent = nullptr);
    ~frmNeOrb() override;

    void Load(const QStringList &names, const QString &workingFolder);
    // Shut-down without closing, for the end of the desktop session.
    void Unload(bool interactive);

    Settings &settings() { return m_settings; }
    PlaylistState &playlist() { return m_playlist; }

    // LifecycleHost
    QPoint windowPos() const override { return pos(); }
    QSize windowSize() const override { return size(); }
    void moveWindow(QPoint p) override { move(p); }
    void minimiseWindow() override { showMinimized(); }
    void ExDevOut(const QString &) override {}
    void createSecondaryWindows() override {}
    void ClearInf() override {}
    void LoadSkin(const QString &file) override { m_skinFile = file; }
    void LoadAutoList(const QString &) override {}
    void LoadStations(const QString &) override {}
    void LoadWebRadio(const QString &) override {}
    void PrepareFmTuner() override {}
    void LoadCvtFile(const QString &) override {}
    void MakeDayStr() override {}
    void InitTimers() override {}
    void AddOpened(const QString &path) override;
    void PlayIt() override {}
    QString currentCover() const override { return m_cover; }
    void SetCover(const QString &file) override { m_cover = file; }
    void MuteFmTuner() override {}
    void CloseDevices() override {}

signals:
    void firstFramePainted();

protected:
    void paintEvent(QPaintEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    Platform m_platform;
    ProgramFolder m_folder;
    Settings m_settings;
    PlaylistState m_playlist;
    ConfigStore m_config;
    Lifecycle m_lifecycle;
    QString m_skinFile;
    QString m_cover;
    bool m_painted = false;
};
