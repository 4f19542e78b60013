#include "fuzztarget.h"

#include "core/settingkeys.h"
#include "core/settings.h"
#include "platform/settingsstore.h"

#include <QFile>

namespace {

// QSettings keeps files it parsed and trusts their size and time: a new
// name for every input keeps one input's values out of the next.
QString freshIni(const QByteArray &bytes)
{
    static int count = 0;
    return fuzzWriteScratch(QStringLiteral("velto-%1.ini").arg(++count % 1000), bytes);
}

QStringList texts(const Settings &s)
{
    QStringList all;
    for (const SettingKey &k : settingKeys())
        for (int slot = 0; slot < k.keyCount(); ++slot)
            all << k.text(s, slot);
    return all;
}

} // namespace

// velto.ini as start-up reads it, whatever a hand or a crash left in it;
// shut-down writes it back, and the next start reads what was written.
VELTO_FUZZ_TARGET(ini)
{
    const QString path = freshIni(input);
    Settings s;
    {
        IniSettingsStore store(path);
        ConfigStore config(store);
        config.ReadAll(s);
        config.ReadPosition(s, 10, 20);
        config.GetCfgStr(QStringLiteral("OutputLevel"), QString()).toUInt();
        config.GetCfgInt(QStringLiteral("LastTrack"), QStringLiteral("0"));
        FUZZ_CHECK(config.WriteAll(s));
    }
    Settings again;
    {
        IniSettingsStore store(path);
        ConfigStore config(store);
        config.ReadAll(again);
        config.ReadPosition(again, 10, 20);
    }
    FUZZ_CHECK(texts(again) == texts(s));
    for (const char *suffix : {"", ".damaged", ".lock"})
        QFile::remove(path + QLatin1String(suffix));
}
