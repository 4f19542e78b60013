#include "core/settingkeys.h"
#include "core/settings.h"

#include "support/fakes.h"
#include "support/temphome.h"

#include <QFile>
#include <QLockFile>
#include <gtest/gtest.h>

TEST(ConfigStore, IntegerOptionsTakeTheLeadingNumberRoundedTo16Bits)
{
    MemoryStore store;
    ConfigStore config(store);
    const std::pair<const char *, qint16> cases[] = {
        {"", 0},      {"12abc", 12},    {"  -3", -3},       {"2.5", 2},   {"3.5", 4},
        {"1e2", 100}, {"40000", 32767}, {"-40000", -32768}, {"1e999", 0},
    };
    for (const auto &[stored, expected] : cases) {
        store.values[QStringLiteral("config/pboverlap")] = QString::fromLatin1(stored);
        EXPECT_EQ(config.GetCfgInt(QStringLiteral("PBOverlap"), QStringLiteral("9")), expected)
            << "stored text: '" << stored << "'";
    }
    EXPECT_EQ(config.GetCfgInt(QStringLiteral("Missing"), QStringLiteral("5")), 5);
    EXPECT_EQ(config.GetCfgInt(QStringLiteral("Missing"), QString()), 0);
}

TEST(ConfigStore, FirstRunReadsDefaultsAndTheWriteKeepsThePositionOnlyWhenAsked)
{
    MemoryStore store;
    Settings s;
    s.ValidExt.clear();
    s.FriendlyNames = 9;
    ConfigStore(store).ReadAll(s);
    EXPECT_EQ(s.MCIDevice, QStringLiteral("0"));
    EXPECT_TRUE(s.ValidExt.startsWith(
        QStringLiteral("mp2 mp3 mpa wma asf wav mid rmi avi mov qt flac ogg ")))
        << "the classic list first, then today's formats";
    EXPECT_EQ(s.FriendlyNames, 1);
    EXPECT_EQ(s.Freq, 870) << "from the default StartFreq 87.0";
    EXPECT_EQ(store.savedKeys.size(), 0) << "reading never writes";

    store.values[QStringLiteral("config/mcidevice")] = QStringLiteral("02x");
    ConfigStore(store).ReadAll(s);
    EXPECT_EQ(s.MCIDevice, QStringLiteral("2"));

    // The position is written only when asked.
    s.WinSavePos = 0;
    s.X = -20;
    ConfigStore(store).WriteAll(s);
    EXPECT_FALSE(store.savedKeys.contains(QStringLiteral("X")));
}

// Every key of the table gets a value of its own, unlike its default, and
// comes back through a real file, except where the table says the key is not
// written or not read.
TEST(ConfigStore, EveryKeyIsWrittenAndReadBack)
{
    Settings written;
    int n = 0;
    for (const SettingKey &k : settingKeys())
        for (int slot = 0; slot < k.keyCount(); ++slot, ++n)
            k.take(written, slot,
                   k.type == SettingKey::Type::S
                       ? QStringLiteral("%1, #%2 = \"ä\"").arg(k.key(slot)).arg(n)
                   : k.type == SettingKey::Type::L ? QString::number(100000 + n)
                                                   : QString::number(-100 - n));
    written.WinSavePos = 1;
    const Settings defaults;
    for (const SettingKey &k : settingKeys())
        for (int slot = 0; slot < k.keyCount(); ++slot)
            ASSERT_NE(k.text(written, slot), k.text(defaults, slot)) << k.key(slot).toStdString();

    TempHome home;
    const QString ini = home.file(QStringLiteral("config/velto/velto.ini"));
    {
        IniSettingsStore store(ini);
        ASSERT_TRUE(ConfigStore(store).WriteAll(written));
    }
    IniSettingsStore store(ini);
    Settings back;
    ConfigStore config(store);
    config.ReadAll(back);
    config.ReadPosition(back, 0, 0);
    for (const SettingKey &k : settingKeys()) {
        const bool isWritten = k.written != SettingKey::Written::Never;
        for (int slot = 0; slot < k.keyCount(); ++slot) {
            const std::string key = k.key(slot).toStdString();
            const auto expected = isWritten ? std::optional(k.text(written, slot)) : std::nullopt;
            EXPECT_EQ(store.get({}, QStringLiteral("config"), k.writtenKey(slot)), expected) << key;
            if (k.read != SettingKey::Read::Never) {
                EXPECT_EQ(k.text(back, slot), k.text(isWritten ? written : defaults, slot)) << key;
            }
        }
    }
}

// A program killed while taking the lock beside velto.ini leaves it empty:
// the next start must not wait for it to age out before every save.
TEST(IniSettingsStore, AnEmptyLockLeftByAKilledRunDoesNotHoldSavesUp)
{
    TempHome home;
    const QString ini = home.write(QStringLiteral("config/velto/velto.ini"), "[config]\n");
    home.write(QStringLiteral("config/velto/velto.ini.lock"), QByteArray());
    IniSettingsStore store(ini);
    QLockFile lock(ini + QStringLiteral(".lock"));
    EXPECT_TRUE(lock.tryLock(0)) << "the empty lock is still there";
}

// Whatever start-up found, shut-down writes a good file, and the key-name
// quirks keep one value across runs.
TEST(IniSettingsStore, BrokenFilesGiveDefaultsAndAreReplacedByAGoodOne)
{
    // The ini fuzz target covers other damage; here one unreadable file.
    TempHome home;
    const QString ini = home.write(QStringLiteral("config/velto/velto.ini"),
                                   QByteArray("\x00\xff\xfe[\x01\x02=\x03\n\n\xc3(", 11));
    Settings s;
    {
        IniSettingsStore store(ini);
        ConfigStore config(store);
        config.ReadAll(s);
        EXPECT_EQ(s.FriendlyNames, 1);
        s.WinOnTop = 1;
        s.ClearPLFirst = 1;
        s.Freq = 1017;
        ASSERT_TRUE(config.WriteAll(s));
    }
    IniSettingsStore again(ini);
    Settings back;
    ConfigStore(again).ReadAll(back);
    EXPECT_EQ(back.WinOnTop, 1);
    EXPECT_EQ(back.ValidExt, s.ValidExt);
    EXPECT_EQ(back.ClearPLFirst, 1) << "read as ClearPLFirst, written as ClearPlFirst";
    EXPECT_EQ(back.Freq, 870) << "the tuned frequency is written as Freq, read from FMFreq";
    QFile file(ini);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_TRUE(text.contains("clearplfirst=1"));
    EXPECT_TRUE(text.contains("freq=1017"));
}
