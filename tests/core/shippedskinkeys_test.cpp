#include "core/keys.h"
#include "skin/skinreader.h"

#include "support/printers.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

// Keys a user learns once: every shipped skin that has the button gives it this key.
const std::map<qint16, QString> SharedKeys = {
    {1001, "Y"}, {1002, "K"}, {1003, "C"}, {1004, "N"}, {1005, "O"}, {1006, "F"}, {1007, "W"},
    {1008, "B"}, {2, "_"},    {38, "M"},   {12, "P"},   {11, "U"},   {10, "S"},   {14, "Z"},
    {15, "X"},   {147, "P"},  {148, "S"},  {140, "Z"},  {141, "X"},
};

// Volume down, up and mute: the buttons beside the player's and karaoke's volume sliders.
const std::map<qint16, QString> VolumeKeys = {{8, "-"}, {7, "+"}, {9, "0"}};

// Close (command 1) has no key: a stray key press must never end the player.
constexpr qint16 Close = 1;

// The outline keys, and space, which plays or pauses while no button claims it.
const std::set<QString> Reserved = {"`", "~", "\x1b", " "};

std::map<qint16, QString> digitsFrom(qint16 zero)
{
    std::map<qint16, QString> keys;
    for (int d = 0; d < 10; ++d)
        keys[qint16(zero + d)] = QString::number(d);
    return keys;
}

std::map<qint16, QString> calculatorKeys()
{
    std::map<qint16, QString> keys = digitsFrom(40);
    keys.insert({{50, "."}, {51, "+"}, {52, "-"}, {53, "*"}, {54, "/"}, {55, "="}, {57, "%"}});
    return keys;
}

} // namespace

TEST(ShippedSkins, EveryButtonButCloseHasAKeyOfItsOwnAndModesShareTheirs)
{
    const struct
    {
        const char *file;
        int mode; // its own mode key, drawn lit and not a button
        std::map<qint16, QString> keys;
    } skins[] = {
        {"default.skin", 1, VolumeKeys},
        {"karaoke.skin", 2, VolumeKeys},
        {"calculator.skin", 3, calculatorKeys()},
        {"notepad.skin", 4, {}},
        {"clock.skin", 5, {{4, "T"}}}, // split, where the player's T switches the time shown
        {"fmtuner.skin", 6, digitsFrom(91)},
        {"webradio.skin", 7, {}},
        {"browser.skin", 8, {}},
    };
    std::set<QString> modeKeys;
    for (int mode = 1001; mode <= 1008; ++mode)
        modeKeys.insert(SharedKeys.at(qint16(mode)));

    for (const auto &skin : skins) {
        SCOPED_TRACE(skin.file);
        const SkinDescription d =
            readSkinFile(QStringLiteral(VELTO_DATA_DIR "/skins/") + QString::fromLatin1(skin.file));
        ASSERT_TRUE(d.messages.isEmpty()) << d.messages.join(QLatin1Char('|')).toStdString();
        ASSERT_GT(d.buttons.size(), 10);

        std::map<QString, qint16> taken;
        std::set<qint16> modes;
        bool hasClose = false;
        for (const SkinButton &b : d.buttons) {
            const QString key = buttonKey(b.name);
            SCOPED_TRACE(b.name.toStdString());
            if (b.command == Close) {
                hasClose = true;
                EXPECT_TRUE(key.isEmpty()) << "close has the key " << key.toStdString();
                continue;
            }
            EXPECT_EQ(key.size(), 1) << "command " << b.command;
            EXPECT_FALSE(Reserved.contains(key));
            const auto [first, fresh] = taken.insert({key, b.command});
            EXPECT_TRUE(fresh) << "command " << b.command << " is shadowed by command "
                               << first->second;
            if (b.command > 1000) {
                modes.insert(b.command);
            } else {
                EXPECT_FALSE(modeKeys.contains(key)) << "a mode's key";
            }
            if (const auto shared = SharedKeys.find(b.command); shared != SharedKeys.end()) {
                EXPECT_EQ(key, shared->second) << "command " << b.command;
            }
            if (const auto own = skin.keys.find(b.command); own != skin.keys.end()) {
                EXPECT_EQ(key, own->second) << "command " << b.command;
            }
        }
        std::set<qint16> otherModes;
        for (int mode = 1; mode <= 8; ++mode)
            if (mode != skin.mode)
                otherModes.insert(qint16(1000 + mode));
        EXPECT_TRUE(hasClose);
        EXPECT_EQ(modes, otherModes);
        for (const auto &[command, key] : skin.keys)
            EXPECT_EQ(taken[key], command) << "key " << key.toStdString();
    }
}
