#include "core/keys.h"

#include "support/printers.h"

#include <QKeySequence>
#include <gtest/gtest.h>

#include <vector>

namespace {

using K = KeyOutcome::Kind;

// Button n of the skin is element n - 1.
std::vector<ButtonKey> skinButtons()
{
    std::vector<ButtonKey> b(121);
    b[0] = {QStringLiteral("P"), 12};
    b[1] = {QStringLiteral("N"), 15};
    b[2] = {QStringLiteral("P"), 10}; // a second "P": the first button wins
    b[3] = {QString(), 99};           // a button without a key
    b[4] = {QStringLiteral("\u00C9"), 23};
    b[5] = {QStringLiteral("1"), 41};
    b[6] = {QStringLiteral("QX"), 20}; // a key text of two characters
    b[119] = {QStringLiteral("Y"), 2}; // button 120, the last one looked at
    b[120] = {QStringLiteral("Z"), 1}; // a 121st button is never a skin's
    return b;
}

TEST(Keys, TypedCharactersMatchTheFirstButtonWithThatKey)
{
    const std::vector<ButtonKey> buttons = skinButtons();
    const std::tuple<char32_t, bool, KeyOutcome> cases[] = {
        {U'~', true, {K::Outline, 2, 0}},     {U'P', false, {K::Command, 0, 12}},
        {U'n', false, {K::Command, 0, 15}},   {U'n', true, {K::PassThrough, 0, 0}},
        {U' ', true, {K::PassThrough, 0, 0}}, {U'\u00E9', false, {K::Command, 0, 23}},
        {U'1', false, {K::Command, 0, 41}},   {U'y', false, {K::Command, 0, 2}},
        {U'z', false, {K::Consumed, 0, 0}},   {U'q', false, {K::Consumed, 0, 0}},
        {U'x', false, {K::Consumed, 0, 0}},   {U' ', false, {K::Command, 0, 36}},
    };
    for (const auto &[code, textFocus, expected] : cases)
        EXPECT_EQ(matchKey(code, buttons, textFocus), expected)
            << "code " << unsigned(code) << (textFocus ? " in a text field" : "");
}

// Space plays or pauses while no button takes it.
TEST(Keys, AButtonCanTakeSpace)
{
    std::vector<ButtonKey> claimed = skinButtons();
    claimed[50] = {QStringLiteral(" "), 20};
    EXPECT_EQ(matchKey(U' ', claimed, false), (KeyOutcome{K::Command, 0, 20}));
}

TEST(Keys, MediaKeysRunThePlayerCommands)
{
    const std::pair<int, std::optional<qint16>> cases[] = {
        {Qt::Key_MediaPlay, 36},       {Qt::Key_MediaTogglePlayPause, 36}, {Qt::Key_MediaPause, 36},
        {Qt::Key_MediaNext, 15},       {Qt::Key_MediaPrevious, 14},        {Qt::Key_MediaStop, 10},
        {Qt::Key_Space, std::nullopt}, {Qt::Key_VolumeUp, std::nullopt},
    };
    for (const auto &[key, command] : cases)
        EXPECT_EQ(mediaKeyCommand(key), command) << QKeySequence(key).toString().toStdString();
}

} // namespace

TEST(ButtonKey, OneCharacterNamesAndMnemonicsGiveKeys)
{
    const std::pair<const char *, const char *> cases[] = {
        {"7", "7"},        {"+", "+"},   {"x", "X"}, {"&Play", "P"}, {"Sto&p", "P"}, {"R&&B", ""},
        {"R&&B &go", "G"}, {"play", ""}, {"", ""},   {"&", "&"},     {"end&", ""}};
    for (const auto &[name, key] : cases)
        EXPECT_EQ(buttonKey(QString::fromUtf8(name)), QString::fromUtf8(key)) << name;
}
