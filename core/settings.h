#pragma once

#include "platform/text.h"

#include <QString>
#include <array>

class SettingsStore;

// The program's options, read once at start and written once at shut-down.
// Names follow the store's keys so a reader can match them to velto.ini; the
// settings table (core/settingkeys.cpp) pairs each key with its variable.
struct Settings
{
    // Every option at the default of its key: what start-up reads from an
    // empty store. The keys start-up never reads begin at 0.
    Settings();

    QString MCIDevice;
    qint16 ContPB{};
    QString Path;
    qint16 WinOnTop{};
    qint16 WinSnap{};
    qint16 WinSavePos{};
    qint16 Auto{};
    qint16 Snooze{};
    qint16 SnoozeMode{};
    QString SnoozeTime;
    qint16 SnoozeHide{};
    qint16 ExitMode{};
    qint16 StartMd{};
    qint16 StartMin{};
    qint16 StartMute{};
    QString StartFile;
    QString Skin;
    QString SkinPath;
    QString SkinImport;
    qint16 TimeFmt{};
    QString VisPLPath;
    qint16 ClearPLFirst{};
    qint16 AutoPlay{};
    QString ValidExt;
    qint16 PBOverlap{};
    qint16 ScrollName{};
    qint16 UseTagCover{};
    qint16 FriendlyNames{};
    qint16 UseSkinBrowser{};
    qint16 NoRMB{};
    qint16 AutoCloseQF{};
    qint16 AutoCover{};
    qint16 UseCDP{};
    qint16 UseCDDB{};
    QString CDDBcmd;
    QString EmailID;
    QString CDDrive;
    qint16 StartPMd{};
    qint16 LastPMd{};
    qint16 ExEnable{};
    qint16 ExDev{};
    qint16 ExPort{};
    QString ExParm;
    QString CvtFile;
    qint16 FMEnable{};
    qint16 CardType{};
    qint16 CardPort{};
    qint16 FMTuneMd{};
    qint16 StartPreset{};
    QString StartFreq;
    qint32 Freq{};
    qint16 FMVolume{};
    std::array<QString, 10> FavSkin;
    std::array<QString, 10> URL;
    std::array<QString, 10> RadioURL;
    qint16 X{};
    qint16 Y{};
};

// GetCfgStr/GetCfgInt and the start-up reader and shut-down writer of Settings.
class ConfigStore
{
public:
    explicit ConfigStore(SettingsStore &store) : m_store(store) {}

    QString GetCfgStr(const QString &key, const QString &defaultText) const;
    qint16 GetCfgInt(const QString &key, const QString &defaultText) const;

    // Every option except "X" and "Y", in the settings table's order.
    void ReadAll(Settings &s) const;
    // "X" and "Y", with the window's current edges as defaults.
    void ReadPosition(Settings &s, int currentX, int currentY) const;
    // Every option written at shut-down, in the writer's order; false when the
    // file could not be written.
    bool WriteAll(const Settings &s);

    void SaveStr(const QString &key, const QString &value);
    bool flush();

private:
    SettingsStore &m_store;
};

// Rounds half to even and saturates into the signed 16-bit range.
qint16 toInt16(double value);
qint32 toInt32(double value);
