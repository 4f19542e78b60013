#pragma once

#include "platform/text.h"

#include <QString>
#include <array>

class SettingsStore;

// The program's options, read once at start and written once at shut-down.
// Names follow the store's keys so a reader can match them to velto.ini.
struct Settings
{
    QString MCIDevice = QStringLiteral("0");
    qint16 ContPB = 0;
    QString Path;
    qint16 WinOnTop = 0;
    qint16 WinSnap = 0;
    qint16 WinSavePos = 0;
    qint16 Auto = 0;
    qint16 Snooze = 0;
    qint16 SnoozeMode = 0;
    QString SnoozeTime = QStringLiteral("23:59");
    qint16 SnoozeHide = 0;
    qint16 ExitMode = 0;
    qint16 StartMd = 0;
    qint16 StartMin = 0;
    qint16 StartMute = 0;
    QString StartFile;
    QString Skin;
    QString SkinPath;
    QString SkinImport;
    qint16 TimeFmt = 0;
    QString VisPLPath;
    qint16 ClearPLFirst = 0;
    qint16 AutoPlay = 0;
    // Today's formats and the tracker modules follow the classic list, so a
    // folder of FLAC or Ogg files is found without a visit to the preferences.
    QString ValidExt = QStringLiteral(
        "mp2 mp3 mpa wma asf wav mid rmi avi mov qt flac ogg oga opus m4a aac mp4 mka mkv "
        "webm wv ape mod s3m xm it mtm 669 far okt stm nst wow");
    qint16 PBOverlap = 0;
    qint16 ScrollName = 0;
    qint16 UseTagCover = 0;
    qint16 FriendlyNames = 1;
    qint16 UseSkinBrowser = 1;
    qint16 NoRMB = 0;
    qint16 AutoCloseQF = 0;
    qint16 AutoCover = 0;
    qint16 UseCDP = 1;
    qint16 UseCDDB = 1;
    QString CDDBcmd = QStringLiteral("http://gnudb.gnudb.org/~cddb/cddb.cgi/?cmd=");
    QString EmailID = QStringLiteral("velto@localhost.localdomain");
    qint16 StartPMd = 0;
    qint16 LastPMd = 0;
    qint16 ExEnable = 0;
    qint16 ExDev = 0;
    qint16 ExPort = 0;
    QString ExParm;
    QString CvtFile;
    qint16 FMEnable = 0;
    qint16 CardType = 0;
    qint16 CardPort = 0;
    qint16 FMTuneMd = 0;
    qint16 StartPreset = 0;
    QString StartFreq = QStringLiteral("87.0");
    qint32 Freq = 870; // read from "FMFreq", written as "Freq"
    qint16 FMVolume = 0;
    std::array<QString, 10> FavSkin;
    std::array<QString, 10> URL;
    std::array<QString, 10> RadioURL;
    qint16 X = 0;
    qint16 Y = 0;
};

// GetCfgStr/GetCfgInt and the start-up reader and shut-down writer of Settings.
class ConfigStore
{
public:
    explicit ConfigStore(SettingsStore &store) : m_store(store) {}

    QString GetCfgStr(const QString &key, const QString &defaultText) const;
    qint16 GetCfgInt(const QString &key, const QString &defaultText) const;

    // Every option except "X" and "Y", in the order start-up reads them.
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
