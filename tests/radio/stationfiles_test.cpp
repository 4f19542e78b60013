#include "radio/fmpreset.h"
#include "radio/stationfile.h"
#include "radio/webstation.h"

#include "support/printers.h"
#include "support/temphome.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

TEST(FmPreset, ReadsFrequencyAndNameFromTheLine)
{
    const struct
    {
        const char *line;
        qint32 frequency;
        const char *name;
    } cases[] = {
        {"101.5 Radio Nova", 1015, "Radio Nova"},
        {"87.6  two blanks", 876, " two blanks"}, // the name starts after the first blank
        {"98.15 Half step", 982, "Half step"},
        {"104", 1040, ""},
        {"Station without a number", 0, "without a number"},
    };
    for (const auto &c : cases) {
        const QString line = QString::fromUtf8(c.line);
        EXPECT_EQ(FmPreset::frequency(line), c.frequency) << c.line;
        EXPECT_EQ(FmPreset::name(line), QString::fromUtf8(c.name)) << c.line;
    }
}

TEST(WebStation, SplitsAtTheFirstAtSign)
{
    const struct
    {
        const char *line;
        const char *name;
        const char *location;
    } cases[] = {
        {"Jazz Radio @ http://jazz.example/stream", "Jazz Radio", "http://jazz.example/stream"},
        {"  Spaced  @   http://a/b  ", "Spaced", "http://a/b"},
        {"name@home @ http://x", "name", "home @ http://x"},
        {"@ http://anonymous", "Unnamed Station", "http://anonymous"},
        {"No at sign at all", "Unnamed Station", ""},
        {"Only a name @", "Only a name", ""},
    };
    for (const auto &c : cases) {
        const WebStation s = readStationLine(QString::fromUtf8(c.line));
        EXPECT_EQ(s.name, QString::fromUtf8(c.name)) << c.line;
        EXPECT_EQ(s.location, QString::fromUtf8(c.location)) << c.line;
    }
    const WebStation s{QStringLiteral("Loop"), QStringLiteral("http://127.0.0.1/x")};
    EXPECT_EQ(stationLine(s), QStringLiteral("Loop @http://127.0.0.1/x"));
}

TEST(StationFile, LinesComeFromAnyLineEndAndEitherEncoding)
{
    const std::pair<QByteArray, QStringList> cases[] = {
        {"a\nb\n", {"a", "b"}},
        {"\n\n101.5 X\n", {"", "", "101.5 X"}},                   // empty presets keep their places
        {"088.0 Caf\xE9\n", {QStringLiteral("088.0 Caf\u00e9")}}, // Windows-1252
    };
    for (const auto &[bytes, lines] : cases)
        EXPECT_EQ(stationFileLines(bytes), lines) << bytes.toStdString();
    EXPECT_EQ(stationFileBytes({QStringLiteral("088.0 Caf\u00e9"), QString()}),
              QByteArray("088.0 Caf\xC3\xA9\n\n"));
}

// A file too big is FmTuner's test, with the message and the file kept.
TEST(StationFile, MissingFileIsAnEmptyListAndAFolderIsAProblem)
{
    TempHome home;
    const StationFile missing = readStationFile(home.file(QStringLiteral("none.txt")));
    EXPECT_TRUE(missing.lines.isEmpty());
    EXPECT_TRUE(missing.problem.isEmpty());
    EXPECT_FALSE(readStationFile(home.path()).problem.isEmpty());
}

TEST(StationFile, WritesWholeOrNotAtAll)
{
    TempHome home;
    const QString path = home.write(QStringLiteral("stations.txt"), "101.5 Old\n");
    ASSERT_TRUE(writeStationFile(path, {QStringLiteral("088.0 FM"), QStringLiteral("92.4 B")}));
    EXPECT_EQ(readStationFile(path).lines,
              QStringList({QStringLiteral("088.0 FM"), QStringLiteral("92.4 B")}));

    const QString folder = home.file(QStringLiteral("folder.txt"));
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_FALSE(writeStationFile(folder, {QStringLiteral("lost")}));
    EXPECT_TRUE(QFileInfo(folder).isDir());
}
