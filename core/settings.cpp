#include "settings.h"

#include "core/settingkeys.h"
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

Settings::Settings()
{
    for (const SettingKey &k : settingKeys())
        if (k.defaultText)
            for (int slot = 0; slot < k.keyCount(); ++slot)
                k.take(*this, slot, QLatin1String(k.defaultText));
}

void ConfigStore::ReadAll(Settings &s) const
{
    for (const SettingKey &k : settingKeys()) {
        if (k.read != SettingKey::Read::Accessor && k.read != SettingKey::Read::Direct)
            continue;
        const QString defaultText = QLatin1String(k.defaultText);
        for (int slot = 0; slot < k.keyCount(); ++slot) {
            const QString key = k.key(slot);
            k.take(s, slot,
                   k.read == SettingKey::Read::Direct
                       ? m_store.get(kWriteApp, kWriteSection, key).value_or(defaultText)
                       : GetCfgStr(key, defaultText));
        }
    }
}

void ConfigStore::ReadPosition(Settings &s, int currentX, int currentY) const
{
    // The window's edges go into the variables first: they are the defaults.
    s.X = toInt16(currentX);
    s.Y = toInt16(currentY);
    for (const SettingKey &k : settingKeys())
        if (k.read == SettingKey::Read::Position)
            k.take(s, 0, GetCfgStr(k.key(), k.text(s)));
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
    auto write = [&](SettingKey::Written group) {
        for (const SettingKey &k : settingKeys())
            if (k.written == group)
                for (int slot = 0; slot < k.keyCount(); ++slot)
                    SaveStr(k.writtenKey(slot), k.text(s, slot));
    };
    write(SettingKey::Written::Leading);
    write(SettingKey::Written::Yes);
    // Turning the option off keeps the last saved position in the store.
    if (s.WinSavePos == 1)
        write(SettingKey::Written::IfSavePos);
    return m_store.flush();
}
