#include "tools/calculator.h"

#include "skin/skinlistarea.h"
#include "support/fakes.h"
#include "support/recordingsurface.h"
#include "support/temphome.h"

#include <QDir>
#include <gtest/gtest.h>

#include <cfloat>
#include <optional>

namespace {

// The calculator on a recording surface, keyed through its command numbers
// as the skin's buttons send them.
class CalculatorTest : public ::testing::Test
{
protected:
    // Tokens: digits and "." as typed, "+ - x / =", the names below, "#n"
    // for command n and "@n" for key code n.
    void key(const QString &tokens)
    {
        static const QMap<QString, qint16> named = {
            {".", 50},  {"+", 51},   {"-", 52},   {"x", 53},    {"/", 54},
            {"=", 55},  {"neg", 56}, {"%", 57},   {"sqrt", 58}, {"1/x", 59},
            {"bs", 60}, {"AC", 61},  {"CE", 62},  {"MC", 63},   {"MS", 64},
            {"MR", 65}, {"M+", 66},  {"cvt", 67}, {"back", 68},
        };
        for (const QString &token : tokens.split(' ', Qt::SkipEmptyParts)) {
            if (named.contains(token)) {
                calc.DoIt(named[token]);
                continue;
            }
            if (token.startsWith('#') || token.startsWith('@')) {
                const qint16 n = qint16(token.mid(1).toInt());
                token.startsWith('#') ? calc.DoIt(n) : calc.CalcKey(n);
                continue;
            }
            for (const QChar c : token) {
                ASSERT_TRUE(c.isDigit() || c == '.') << token.toStdString();
                calc.DoIt(c == '.' ? 50 : qint16(40 + c.digitValue()));
            }
        }
    }
    QString shown() const { return skin.labels.value(Calculator::kDisplayLabel); }
    QString folder() const { return home.file(QStringLiteral("velto")); }
    QString writeFile(const QString &name, const QByteArray &bytes)
    {
        return home.write(QStringLiteral("velto/") + name, bytes);
    }
    SkinListArea &list() { return *skin.list(Calculator::kConversionList); }

    TempHome home;
    RecordingSurface skin;
    FakeDialogs dialogs;
    QString CvtFile;
    Calculator calc{{CvtFile}, {skin, dialogs, folder()}};
};

} // namespace

TEST(CalcNumber, ShowsTheShortestDigitsThatReadBackTheSame)
{
    const std::pair<double, const char *> cases[] = {
        {-0.0, "0"},
        {0.1 + 0.2, "0.30000000000000004"},
        {1e16, "1e+16"},
        {1e15, "1e+15"},
        {1e-4, "0.0001"},
        {1e-5, "1e-05"},
        {DBL_MAX, "1.7976931348623157e+308"},
    };
    for (const auto &[value, text] : cases)
        EXPECT_EQ(calcNumber(value), QString::fromLatin1(text)) << text;
}

// Every key code in the sequences a user would key; the display after each.
// Text before a "|" is what a skin put on the display first.
TEST_F(CalculatorTest, KeySequencesShowWhatTheKeysMean)
{
    const struct
    {
        const char *keys;
        const char *shown;
    } cases[] = {
        // Entry: leading zeros, the point, the 15-character limit.
        {"0 0 0", "0"},
        {"1234567890123456", "123456789012345"},
        {".", "0."},
        {"1 . 5 . 2", "1.52"},
        // A digit after an operator starts anew; 1 + 2 x 3 = is the end-to-end test's.
        {"1 + 2 = 5", "5"},
        {"5 / 0 =", "5"},
        // Change sign; "0" leaves an empty display.
        {"5 neg", "-5"},
        {"0 neg", ""},
        {"100000000 x 100000000 = neg", "-1e+16"},
        // Percent by the pending operator; without one it is the value.
        {"2 0 0 + 1 0 %", "220"},
        {"2 0 0 x 1 0 %", "4000"},
        {"2 0 0 / 0 %", "0"},
        {"5 %", "5"},
        // Root and reciprocal; a failing step keeps the display.
        {"2 sqrt", "1.4142135623730951"},
        {"2 neg sqrt", "-2"},
        {"0 1/x", "0"},
        // Backspace: a result of "0" becomes "".
        {"1 2 bs", "1"},
        {"1 bs", ""},
        // Clears: AC forgets the pending operator, CE only the entry.
        {"5 + AC 2 =", "2"},
        {"5 + 3 CE 4 =", "9"},
        {"5 MS CE 3 M+ MR", "8"},
        {"5 MS 3", "53"},
        {"5 MS MC MR", "0"},
        {"7 MS AC 1 + MR =", "8"},
        // The display is read by its leading number; an overflow changes nothing.
        {" 42|", "42"},
        {"abc|+ 1 =", "1"},
        {"1e308|x 1 0 =", "10"},
        {"1e308|MS M+ MR", "1e+308"},
        // Codes outside the table.
        {"12|@-1 @18 @100 @32767 #39 #70 #0", "12"},
    };
    for (const auto &c : cases) {
        calc.CalcKey(10);
        calc.CalcKey(12);
        skin.labels.clear();
        const QString row = QString::fromLatin1(c.keys);
        const qsizetype bar = row.indexOf('|');
        if (bar >= 0)
            calc.SetCalc(row.left(bar));
        key(row.mid(bar + 1));
        EXPECT_EQ(shown(), QString::fromLatin1(c.shown)) << c.keys;
    }
}

TEST_F(CalculatorTest, KeyboardKeysWithoutAButtonHaveTheirMeaning)
{
    const std::pair<char32_t, std::optional<qint16>> cases[] = {
        {U'\r', 55}, {U'\b', 60},          {27, 61}, {127, 62}, {U'X', 53}, {U'*', 53}, {U',', 50},
        {U'%', 57},  {U'q', std::nullopt},
    };
    for (const auto &[typed, command] : cases)
        EXPECT_EQ(calc.keyCommand(typed), command) << int(typed);
}

TEST_F(CalculatorTest, ConversionsComeFromTheFileAndWorkBothWays)
{
    writeFile("units.ccf", "Inches to cm,2.54\r\n"
                           "Celsius to Fahrenheit,1.8,32\n"
                           "No comma\n"
                           "  Padded ,2 \n"
                           "Zero,0");
    calc.started();
    EXPECT_TRUE(dialogs.calls.isEmpty()) << "no last file: no file dialog at start";
    EXPECT_EQ(shown(), QStringLiteral("0"));
    calc.LoadCvtFile(QStringLiteral("units.ccf"));
    EXPECT_EQ(CvtFile, QStringLiteral("units.ccf")) << "kept as given";
    EXPECT_TRUE(dialogs.messages.isEmpty());
    const QStringList lines = {"Inches to cm,2.54", "Celsius to Fahrenheit,1.8,32", "No comma",
                               "  Padded ,2 ", "Zero,0"};
    ASSERT_EQ(calc.conversions(), lines);
    ASSERT_EQ(list().count(), lines.size());
    EXPECT_EQ(list().item(3)->text(), lines[3]) << "lines are listed whole, as read";
    EXPECT_EQ(list().currentRow(), 0) << "the conversion the arrows use shows";
    EXPECT_EQ(skin.labels.value(Calculator::kConversionLabel), QStringLiteral("Inches to cm"));

    const struct
    {
        int row;
        const char *name;
        const char *keys;
        const char *shown;
    } cases[] = {
        {0, "Inches to cm", "1 0 cvt", "25.4"},
        {0, "Inches to cm", "2 5 . 4 back", "10"},
        {1, "Celsius to Fahrenheit", "1 0 0 cvt", "212"},
        {2, "No comma", "5 cvt", "5"},
        {3, "  Padded ", "3 cvt back", "3"},
        {4, "Zero", "5 back", "0"},
    };
    for (const auto &c : cases) {
        list().setCurrentRow(c.row);
        EXPECT_EQ(calc.cvtIndex(), c.row);
        EXPECT_EQ(skin.labels.value(Calculator::kConversionLabel), QString::fromLatin1(c.name));
        key("AC");
        key(QString::fromLatin1(c.keys));
        EXPECT_EQ(shown(), QString::fromLatin1(c.shown)) << c.keys;
    }

    // The list is not cleared by a second file.
    const QString more = writeFile("more.ccf", "Miles to km,1.609344\n");
    calc.LoadCvtFile(more);
    EXPECT_EQ(list().count(), lines.size() + 1);
    EXPECT_EQ(CvtFile, more);
}

TEST_F(CalculatorTest, NoConversionConvertsNothingAndTheDialogAsksForAFile)
{
    key("5 cvt");
    EXPECT_EQ(shown(), QStringLiteral("5")) << "an empty list converts nothing";
    calc.DoIt(69);
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_EQ(dialogs.calls[0].folder, folder());
    EXPECT_EQ(CvtFile, QString()) << "cancelled";

    const QString file = writeFile("lengths.ccf", "Feet to m,0.3048\n");
    dialogs.openResults.push_back({file});
    calc.DoIt(69);
    EXPECT_EQ(CvtFile, file);
    EXPECT_EQ(calc.conversions(), QStringList{"Feet to m,0.3048"});
}

// The conversion list is the skin's and outlives a calculator. A gone one
// must not hear its clicks: here another calculator takes its place in
// memory, on another skin, and would show the click there.
TEST_F(CalculatorTest, AGoneCalculatorHearsNoClicksOnTheList)
{
    writeFile("units.ccf", "Inches to cm,2.54\n");
    CvtFile = QStringLiteral("units.ccf");
    RecordingSurface elsewhere;
    std::optional<Calculator> slot;
    slot.emplace(Calculator::Options{CvtFile}, Calculator::Services{skin, dialogs, folder()});
    slot->started();
    ASSERT_EQ(slot->conversions(), QStringList{"Inches to cm,2.54"}) << "the last file loads";
    slot.reset();
    slot.emplace(Calculator::Options{CvtFile}, Calculator::Services{elsewhere, dialogs, folder()});
    slot->started();
    elsewhere.labels.clear();
    list().setCurrentRow(-1);
    list().setCurrentRow(0);
    EXPECT_FALSE(elsewhere.labels.contains(Calculator::kConversionLabel));
}

TEST_F(CalculatorTest, BadFilesSayWhatIsWrongAndAddNothing)
{
    QByteArray big(int(8 * 1024 * 1024) + 1, 'a');
    QByteArray binary("Inches,2.54\n\0\x01\x02\xff", 16);
    QDir(home.path()).mkpath(QStringLiteral("velto/folder.ccf"));
    const struct
    {
        const char *name;
        QByteArray bytes;
        const char *message;
    } cases[] = {
        {"binary.ccf", binary, "binary.ccf is not a conversion file: it is not text."},
        {"big.ccf", big, "The conversion file %1/big.ccf cannot be read: it is too big."},
        {"folder.ccf",
         {},
         "The conversion file %1/folder.ccf cannot be read: it is not a "
         "regular file."},
        {"missing.ccf", {}, nullptr},
    };
    for (const auto &c : cases) {
        dialogs.messages.clear();
        if (!c.bytes.isEmpty())
            writeFile(QString::fromLatin1(c.name), c.bytes);
        calc.LoadCvtFile(QString::fromLatin1(c.name));
        const QString message = QString::fromLatin1(c.message).replace("%1", folder());
        EXPECT_EQ(dialogs.messages, c.message ? QStringList{message} : QStringList{}) << c.name;
        EXPECT_TRUE(calc.conversions().isEmpty()) << c.name;
        EXPECT_EQ(CvtFile, QString()) << c.name;
    }
}
