#include "settingkeys.h"

#include "platform/text.h"

#include <algorithm>

namespace {

using T = SettingKey::Type;
using R = SettingKey::Read;
using W = SettingKey::Written;
using S = Settings;

// Reading order. The writer starts with the Leading keys, and its "Freq" and
// "FMVolume" sit here after "CvtFile" because start-up never reads them.
constexpr SettingKey kKeys[] = {
    {"MCIDevice", T::I, &S::MCIDevice, "0", R::Accessor, W::Leading},
    {"ContPB", T::I, &S::ContPB, "0", R::Accessor, W::Leading},
    {"Path", T::S, &S::Path, "", R::Accessor, W::Never},
    {"WinOnTop", T::I, &S::WinOnTop, "0", R::Accessor, W::Yes},
    {"WinSnap", T::I, &S::WinSnap, "0", R::Accessor, W::Yes},
    {"WinSavePos", T::I, &S::WinSavePos, "0", R::Accessor, W::Yes},
    {"Auto", T::I, &S::Auto, "0", R::Accessor, W::Yes},
    {"Snooze", T::I, &S::Snooze, "0", R::Accessor, W::Yes},
    {"SnoozeMode", T::I, &S::SnoozeMode, "0", R::Accessor, W::Yes},
    {"SnoozeTime", T::S, &S::SnoozeTime, "23:59", R::Accessor, W::Yes},
    {"SnoozeHide", T::I, &S::SnoozeHide, "0", R::Accessor, W::Yes},
    {"ExitMode", T::I, &S::ExitMode, "0", R::Accessor, W::Yes},
    {"StartMd", T::I, &S::StartMd, "0", R::Accessor, W::Yes},
    {"StartMin", T::I, &S::StartMin, "0", R::Accessor, W::Yes},
    {"StartMute", T::I, &S::StartMute, "0", R::Accessor, W::Yes},
    {"StartFile", T::S, &S::StartFile, "", R::Accessor, W::Yes},
    {"Skin", T::S, &S::Skin, "", R::Accessor, W::Leading},
    {"SkinPath", T::S, &S::SkinPath, "", R::Accessor, W::Leading},
    {"SkinImport", T::S, &S::SkinImport, "", R::Accessor, W::Leading},
    {"TimeFmt", T::I, &S::TimeFmt, "", R::Accessor, W::Yes},
    {"VisPLPath", T::S, &S::VisPLPath, "", R::Accessor, W::Yes},
    // One value on a store that folds case, as ours does.
    {"ClearPLFirst", T::I, &S::ClearPLFirst, "", R::Accessor, W::Yes, "ClearPlFirst"},
    {"AutoPlay", T::I, &S::AutoPlay, "", R::Accessor, W::Yes},
    // Today's formats and the tracker modules follow the classic list, so a
    // folder of FLAC or Ogg files is found without a visit to the preferences.
    {"ValidExt", T::S, &S::ValidExt,
     "mp2 mp3 mpa wma asf wav mid rmi avi mov qt flac ogg oga opus m4a aac mp4 mka mkv "
     "webm wv ape mod s3m xm it mtm 669 far okt stm nst wow",
     R::Accessor, W::Yes},
    {"PBOverlap", T::I, &S::PBOverlap, "0", R::Accessor, W::Yes},
    {"ScrollName", T::I, &S::ScrollName, "0", R::Accessor, W::Yes},
    {"UseTagCover", T::I, &S::UseTagCover, "0", R::Accessor, W::Yes},
    {"FriendlyNames", T::I, &S::FriendlyNames, "1", R::Accessor, W::Yes},
    {"UseSkinBrowser", T::I, &S::UseSkinBrowser, "1", R::Accessor, W::Yes},
    {"NoRMB", T::I, &S::NoRMB, "0", R::Accessor, W::Yes},
    {"AutoCloseQF", T::I, &S::AutoCloseQF, "0", R::Accessor, W::Yes},
    {"AutoCover", T::I, &S::AutoCover, "0", R::Accessor, W::Yes},
    {"UseCDP", T::I, &S::UseCDP, "1", R::Accessor, W::Yes},
    {"UseCDDB", T::I, &S::UseCDDB, "1", R::Accessor, W::Yes},
    {"CDDBcmd", T::S, &S::CDDBcmd, "http://gnudb.gnudb.org/~cddb/cddb.cgi/?cmd=", R::Accessor,
     W::Yes},
    {"EmailID", T::S, &S::EmailID, "velto@localhost.localdomain", R::Accessor, W::Yes},
    // The drive CD mode plays; a disc image (.cue) may stand in for it.
    {"CDDrive", T::S, &S::CDDrive, "/dev/cdrom", R::Accessor, W::Yes},
    {"StartPMd", T::I, &S::StartPMd, "0", R::Accessor, W::Yes},
    {"LastPMd", T::I, &S::LastPMd, "0", R::Accessor, W::Yes},
    {"ExEnable", T::I, &S::ExEnable, "0", R::Accessor, W::Yes},
    {"ExDev", T::I, &S::ExDev, "0", R::Accessor, W::Yes},
    {"ExPort", T::I, &S::ExPort, "0", R::Accessor, W::Yes},
    {"ExParm", T::S, &S::ExParm, "", R::Accessor, W::Yes},
    {"CvtFile", T::S, &S::CvtFile, "", R::Accessor, W::Yes},
    // The tuned frequency is written as "Freq" but read from "FMFreq", so a
    // run starts on the frequency read, not the last one tuned. Intended.
    {"Freq", T::L, &S::Freq, nullptr, R::Never, W::Yes},
    {"FMVolume", T::I, &S::FMVolume, nullptr, R::Never, W::Yes},
    {"FMEnable", T::I, &S::FMEnable, "0", R::Accessor, W::Yes},
    {"CardType", T::I, &S::CardType, "0", R::Accessor, W::Yes},
    {"CardPort", T::I, &S::CardPort, "0", R::Accessor, W::Yes},
    {"FMTuneMd", T::I, &S::FMTuneMd, "0", R::Accessor, W::Yes},
    {"StartPreset", T::I, &S::StartPreset, "0", R::Accessor, W::Yes},
    {"StartFreq", T::S, &S::StartFreq, "87.0", R::Direct, W::Yes},
    {"FMFreq", T::L, &S::Freq, "870", R::Direct, W::Never},
    {"FavSkin", T::S, &S::FavSkin, "", R::Accessor, W::Yes},
    {"URL", T::S, &S::URL, "", R::Accessor, W::Yes},
    {"RadioURL", T::S, &S::RadioURL, "", R::Accessor, W::Yes},
    {"X", T::I, &S::X, nullptr, R::Position, W::IfSavePos},
    {"Y", T::I, &S::Y, nullptr, R::Position, W::IfSavePos},
};

constexpr bool typeFitsField(const SettingKey &k)
{
    if (std::holds_alternative<qint16 Settings::*>(k.field))
        return k.type == T::I;
    if (std::holds_alternative<qint32 Settings::*>(k.field))
        return k.type == T::L;
    if (std::holds_alternative<QString Settings::*>(k.field))
        return k.type == T::S || k.type == T::I;
    return k.type == T::S;
}
static_assert(std::ranges::all_of(kKeys, typeFitsField));
static_assert(std::ranges::all_of(kKeys, [](const SettingKey &k) {
    return (k.defaultText != nullptr) == (k.read == R::Accessor || k.read == R::Direct);
}));

} // namespace

QString SettingKey::key(int slot) const
{
    if (keyCount() == 1)
        return QLatin1String(name);
    // The slot digit is the character 48 + slot.
    return QLatin1String(name) + QChar(48 + slot);
}

QString SettingKey::writtenKey(int slot) const
{
    return writtenAs ? QLatin1String(writtenAs) : key(slot);
}

QString SettingKey::text(const Settings &s, int slot) const
{
    return std::visit(
        [&](auto member) -> QString {
            const auto &value = s.*member;
            using V = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<V, List>)
                return value[slot];
            else if constexpr (std::is_same_v<V, QString>)
                return value;
            else
                return QString::number(value);
        },
        field);
}

void SettingKey::take(Settings &s, int slot, const QString &stored) const
{
    std::visit(
        [&](auto member) {
            auto &value = s.*member;
            using V = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<V, List>)
                value[slot] = stored;
            else if constexpr (std::is_same_v<V, QString>)
                value = type == Type::I ? QString::number(toInt16(leadingNumber(stored))) : stored;
            else if constexpr (std::is_same_v<V, qint32>)
                value = toInt32(leadingNumber(stored));
            else
                value = toInt16(leadingNumber(stored));
        },
        field);
}

std::span<const SettingKey> settingKeys()
{
    return kKeys;
}

QString settingKey(SettingKey::Field field, int slot)
{
    for (const SettingKey &k : kKeys)
        if (k.field == field)
            return k.key(slot);
    Q_ASSERT_X(false, "settingKey", "a variable without a key");
    return {};
}
