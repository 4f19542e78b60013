#include "core/keys.h"
#include "skin/skinreader.h"

#include "support/printers.h"

#include <QDir>
#include <gtest/gtest.h>

#include <map>
#include <set>

// Every button of a shipped skin but Close has a key of its own, and a mode
// button has the same key in every skin and no other button has it, so a
// user learns it once. Close has none: a stray key press must never end the
// player.
TEST(ShippedSkins, EveryButtonButCloseHasAKeyOfItsOwnAndModesShareTheirs)
{
    constexpr qint16 Close = 1;
    // The outline keys, and space, which plays or pauses while no button claims it.
    const std::set<QString> reserved = {"`", "~", "\x1b", " "};
    std::map<qint16, QString> modeKeys;
    std::set<QString> otherKeys;
    const QDir skins(QStringLiteral(VELTO_DATA_DIR "/skins"));
    const QStringList files = skins.entryList({QStringLiteral("*.skin")});
    ASSERT_GE(files.size(), 8);
    for (const QString &file : files) {
        SCOPED_TRACE(file.toStdString());
        const SkinDescription d = readSkinFile(skins.filePath(file));
        ASSERT_TRUE(d.messages.isEmpty()) << d.messages.join(QLatin1Char('|')).toStdString();
        std::map<QString, qint16> taken;
        for (const SkinButton &b : d.buttons) {
            const QString key = buttonKey(b.name);
            SCOPED_TRACE(b.name.toStdString());
            if (b.command == Close) {
                EXPECT_TRUE(key.isEmpty()) << "close has the key " << key.toStdString();
                continue;
            }
            EXPECT_EQ(key.size(), 1) << "command " << b.command;
            EXPECT_FALSE(reserved.contains(key));
            const auto [first, fresh] = taken.insert({key, b.command});
            EXPECT_TRUE(fresh) << "command " << b.command << " is shadowed by command "
                               << first->second;
            if (b.command > 1000) {
                const auto [mode, added] = modeKeys.insert({b.command, key});
                EXPECT_EQ(key, mode->second) << "mode " << b.command;
            } else {
                otherKeys.insert(key);
            }
        }
    }
    EXPECT_EQ(modeKeys.size(), 8u);
    for (const auto &[mode, key] : modeKeys)
        EXPECT_FALSE(otherKeys.contains(key)) << "mode " << mode << " shares its key";
}
