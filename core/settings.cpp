#include "settings.h"

#include "platform/settingsstore.h"

#include <cmath>
#include <limits>

namespace {

// Readers and writers spell the application and section differently; the store
// folds case, so both reach the same values.
const QString kReadApp = QStringLiteral("Velto");
const QString kReadSection = QStringLiteral("Config");
const QString kWriteApp = QStringLiteral("velto");
const QString kWriteSection = QStringLiteral("config");

QString slotKey(const char *stem, int slot)
{
    return QLatin1String(stem) + QChar(48 + slot);
}

} // namespace

template<typename Int> static Int roundSaturate(double value)
{
    if (!std::isfinite(value))
        return 0;
    const double r = std::nearbyint(value); // default rounding mode: half to even
    if (r <= double(std::numeric_limits<Int>::min()))
        return std::numeric_limits<Int>::min();
    if (r >= double(std::numeric_limits<Int>::max()))
        return std::numeric_limits<Int>::max();
    return Int(r);
}

qint16 toInt16(double value)
{
    return roundSaturate<qint16>(value);
}

qint32 toInt32(double value)
{
    return roundSaturate<qint32>(value);
}

QString ConfigStore::GetCfgStr(const QString &key, const QString &defaultText) const
{
    return m_store.get(kReadApp, kReadSection, key).value_or(defaultText);
}

qint16 ConfigStore::GetCfgInt(const QString &key, const QString &defaultText) const
{
    return toInt16(leadingNumber(GetCfgStr(key, defaultText)));
}

void ConfigStore::ReadAll(Settings &s) const
{
    const Settings d;
    auto i = [this](const char *key, const QString &def) {
        return GetCfgInt(QLatin1String(key), def);
    };
    auto str = [this](const char *key, const QString &def) {
        return GetCfgStr(QLatin1String(key), def);
    };
    const QString zero = QStringLiteral("0");
    const QString one = QStringLiteral("1");

    s.MCIDevice = QString::number(i("MCIDevice", zero));
    s.ContPB = i("ContPB", zero);
    s.Path = str("Path", {});
    s.WinOnTop = i("WinOnTop", zero);
    s.WinSnap = i("WinSnap", zero);
    s.WinSavePos = i("WinSavePos", zero);
    s.Auto = i("Auto", zero);
    s.Snooze = i("Snooze", zero);
    s.SnoozeMode = i("SnoozeMode", zero);
    s.SnoozeTime = str("SnoozeTime", QStringLiteral("23:59"));
    s.SnoozeHide = i("SnoozeHide", zero);
    s.ExitMode = i("ExitMode", zero);
    s.StartMd = i("StartMd", zero);
    s.StartMin = i("StartMin", zero);
    s.StartMute = i("StartMute", zero);
    s.StartFile = str("StartFile", {});
    s.Skin = str("Skin", {});
    s.SkinPath = str("SkinPath", {});
    s.SkinImport = str("SkinImport", {});
    s.TimeFmt = i("TimeFmt", {});
    s.VisPLPath = str("VisPLPath", {});
    s.ClearPLFirst = i("ClearPLFirst", {});
    s.AutoPlay = i("AutoPlay", {});
    s.ValidExt = str("ValidExt", d.ValidExt);
    s.PBOverlap = i("PBOverlap", zero);
    s.ScrollName = i("ScrollName", zero);
    s.UseTagCover = i("UseTagCover", zero);
    s.FriendlyNames = i("FriendlyNames", one);
    s.UseSkinBrowser = i("UseSkinBrowser", one);
    s.NoRMB = i("NoRMB", zero);
    s.AutoCloseQF = i("AutoCloseQF", zero);
    s.AutoCover = i("AutoCover", zero);
    s.UseCDP = i("UseCDP", one);
    s.UseCDDB = i("UseCDDB", one);
    s.CDDBcmd = str("CDDBcmd", d.CDDBcmd);
    s.EmailID = str("EmailID", d.EmailID);
    s.StartPMd = i("StartPMd", zero);
    s.LastPMd = i("LastPMd", zero);
    s.ExEnable = i("ExEnable", zero);
    s.ExDev = i("ExDev", zero);
    s.ExPort = i("ExPort", zero);
    s.ExParm = str("ExParm", {});
    s.CvtFile = str("CvtFile", {});
    s.FMEnable = i("FMEnable", zero);
    s.CardType = i("CardType", zero);
    s.CardPort = i("CardPort", zero);
    s.FMTuneMd = i("FMTuneMd", zero);
    s.StartPreset = i("StartPreset", zero);
    // The two frequency options are read directly, under the writers' names.
    s.StartFreq = m_store.get(kWriteApp, kWriteSection, QStringLiteral("StartFreq"))
                      .value_or(QStringLiteral("87.0"));
    s.Freq = toInt32(leadingNumber(m_store.get(kWriteApp, kWriteSection, QStringLiteral("FMFreq"))
                                       .value_or(QStringLiteral("870"))));
    for (int slot = 0; slot < 10; ++slot)
        s.FavSkin[slot] = GetCfgStr(slotKey("FavSkin", slot), {});
    for (int slot = 0; slot < 10; ++slot)
        s.URL[slot] = GetCfgStr(slotKey("URL", slot), {});
    for (int slot = 0; slot < 10; ++slot)
        s.RadioURL[slot] = GetCfgStr(slotKey("RadioURL", slot), {});
}

void ConfigStore::ReadPosition(Settings &s, int currentX, int currentY) const
{
    s.X = GetCfgInt(QStringLiteral("X"), QString::number(currentX));
    s.Y = GetCfgInt(QStringLiteral("Y"), QString::number(currentY));
}

void ConfigStore::SaveStr(const QString &key, const QString &value)
{
    m_store.save(kWriteApp, kWriteSection, key, value);
}

bool ConfigStore::flush()
{
    return m_store.flush();
}

bool ConfigStore::WriteAll(const Settings &s)
{
    auto w = [this](const char *key, const QString &value) { SaveStr(QLatin1String(key), value); };
    auto n = [](qint32 v) { return QString::number(v); };

    w("MCIDevice", s.MCIDevice);
    w("ContPB", n(s.ContPB));
    w("Skin", s.Skin);
    w("SkinPath", s.SkinPath);
    w("SkinImport", s.SkinImport);
    w("WinOnTop", n(s.WinOnTop));
    w("WinSnap", n(s.WinSnap));
    w("WinSavePos", n(s.WinSavePos));
    w("Auto", n(s.Auto));
    w("Snooze", n(s.Snooze));
    w("SnoozeMode", n(s.SnoozeMode));
    w("SnoozeTime", s.SnoozeTime);
    w("SnoozeHide", n(s.SnoozeHide));
    w("ExitMode", n(s.ExitMode));
    w("StartMd", n(s.StartMd));
    w("StartMin", n(s.StartMin));
    w("StartMute", n(s.StartMute));
    w("StartFile", s.StartFile);
    w("TimeFmt", n(s.TimeFmt));
    w("VisPLPath", s.VisPLPath);
    w("ClearPlFirst", n(s.ClearPLFirst)); // read as "ClearPLFirst"; the store folds case
    w("AutoPlay", n(s.AutoPlay));
    w("ValidExt", s.ValidExt);
    w("PBOverlap", n(s.PBOverlap));
    w("ScrollName", n(s.ScrollName));
    w("UseTagCover", n(s.UseTagCover));
    w("FriendlyNames", n(s.FriendlyNames));
    w("UseSkinBrowser", n(s.UseSkinBrowser));
    w("NoRMB", n(s.NoRMB));
    w("AutoCloseQF", n(s.AutoCloseQF));
    w("AutoCover", n(s.AutoCover));
    w("UseCDP", n(s.UseCDP));
    w("UseCDDB", n(s.UseCDDB));
    w("CDDBcmd", s.CDDBcmd);
    w("EmailID", s.EmailID);
    w("StartPMd", n(s.StartPMd));
    w("LastPMd", n(s.LastPMd));
    w("ExEnable", n(s.ExEnable));
    w("ExDev", n(s.ExDev));
    w("ExPort", n(s.ExPort));
    w("ExParm", s.ExParm);
    w("CvtFile", s.CvtFile);
    w("Freq", n(s.Freq)); // read back from "FMFreq": the asymmetry is intended
    w("FMVolume", n(s.FMVolume));
    w("FMEnable", n(s.FMEnable));
    w("CardType", n(s.CardType));
    w("CardPort", n(s.CardPort));
    w("FMTuneMd", n(s.FMTuneMd));
    w("StartPreset", n(s.StartPreset));
    w("StartFreq", s.StartFreq);
    for (int slot = 0; slot < 10; ++slot)
        SaveStr(slotKey("FavSkin", slot), s.FavSkin[slot]);
    for (int slot = 0; slot < 10; ++slot)
        SaveStr(slotKey("URL", slot), s.URL[slot]);
    for (int slot = 0; slot < 10; ++slot)
        SaveStr(slotKey("RadioURL", slot), s.RadioURL[slot]);
    if (s.WinSavePos == 1) {
        w("X", n(s.X));
        w("Y", n(s.Y));
    }
    return m_store.flush();
}
