#include "tools/conversionfile.h"

#include "support/testbytes.h"

#include <QDir>
#include <QDirIterator>
#include <gtest/gtest.h>

#include <cmath>

TEST(ConversionFile, KeepsEveryLineThatIsNotBlankAsItStands)
{
    const std::pair<QByteArray, QStringList> cases[] = {
        {"a,1\nb,2", {"a,1", "b,2"}},
        {"  spaced , 2 \n", {"  spaced , 2 "}},
        {"no comma\n,\n,,\n", {"no comma", ",", ",,"}},
        {"caf\xE9,1", {"caf\u00e9,1"}},
    };
    for (const auto &[bytes, lines] : cases) {
        const ConversionFile file = readConversionFile(bytes, QStringLiteral("u.ccf"));
        EXPECT_EQ(file.lines, lines) << bytes.toStdString();
        EXPECT_TRUE(file.messages.isEmpty()) << bytes.toStdString();
    }
}

TEST(ConversionFile, LeavesOutLinesTooLongToBeConversions)
{
    const QByteArray longest = "x," + QByteArray(kMaxConversionLine - 2, '1');
    const ConversionFile lengths = readConversionFile(
        longest + "\n" + longest + "1\nok,2\n" + QByteArray(5000, 'y'), QStringLiteral("l.ccf"));
    EXPECT_EQ(lengths.lines, QStringList({QString::fromLatin1(longest), "ok,2"}));
    EXPECT_EQ(lengths.messages,
              QStringList{"2 line(s) of l.ccf are too long for a conversion and were left out."});
}

TEST(Conversion, ReadsNameFactorAndOffsetAsLeadingNumbers)
{
    const struct
    {
        const char *line;
        const char *name;
        double factor, offset;
        bool valid;
    } cases[] = {
        {"inches to cm,2.54", "inches to cm", 2.54, 0, true},
        {"C to F,1.8,32", "C to F", 1.8, 32, true},
        {"spaced , 2 , 3 ", "spaced ", 2, 3, true},
        {"unit,2.54 cm", "unit", 2.54, 0, true},
        {"no comma", "no comma", 1, 0, false},
        {"empty,", "empty", 0, 0, true},
        {",5", "", 5, 0, true},
    };
    for (const auto &c : cases) {
        const Conversion conv = parseConversion(QString::fromLatin1(c.line));
        EXPECT_EQ(conv.name, QString::fromLatin1(c.name)) << c.line;
        EXPECT_EQ(conv.factor, c.factor) << c.line;
        EXPECT_EQ(conv.offset, c.offset) << c.line;
        EXPECT_EQ(conv.valid, c.valid) << c.line;
    }
}

// The files Velto ships: every line a conversion, and a few known answers.
TEST(ConversionFile, ShippedFilesHoldGoodConversions)
{
    QMap<QString, Conversion> byName;
    int files = 0;
    for (QDirIterator it(QStringLiteral(VELTO_DATA_DIR), {QStringLiteral("*.ccf")}, QDir::Files);
         it.hasNext(); ++files) {
        const QString path = it.next();
        const ConversionFile file = readConversionFile(readAll(path), path);
        EXPECT_TRUE(file.messages.isEmpty()) << path.toStdString();
        EXPECT_FALSE(file.lines.isEmpty()) << path.toStdString();
        for (const QString &line : file.lines) {
            const Conversion c = parseConversion(line);
            EXPECT_TRUE(c.valid && c.factor > 0 && std::isfinite(c.offset)) << line.toStdString();
            EXPECT_FALSE(byName.contains(c.name)) << "twice: " << c.name.toStdString();
            byName.insert(c.name, c);
        }
    }
    EXPECT_EQ(files, 5);
    const struct
    {
        const char *name;
        double in, out;
    } known[] = {
        {"Kelvin to Fahrenheit", 0, -459.67},
        {"miles to km", 1, 1.609344},
    };
    for (const auto &k : known) {
        ASSERT_TRUE(byName.contains(QString::fromLatin1(k.name))) << k.name;
        const Conversion c = byName[QString::fromLatin1(k.name)];
        EXPECT_NEAR(k.in * c.factor + c.offset, k.out, 1e-9) << k.name;
        EXPECT_NEAR((k.out - c.offset) / c.factor, k.in, 1e-9) << k.name;
    }
    for (auto it = byName.cbegin(); it != byName.cend(); ++it) {
        const bool currency =
            it.key().contains(QLatin1String("EUR")) || it.key().contains(QLatin1String("USD"));
        EXPECT_TRUE(!currency || it.key().contains(QLatin1String("example"))) << "rates change";
    }
}
