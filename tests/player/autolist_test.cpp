#include "player/autolist.h"
#include "support/temphome.h"

#include <QDir>
#include <gtest/gtest.h>

TEST(AutoList, LoadsNonBlankLinesAsWrittenAndSavesWithoutLosingTheOldFile)
{
    TempHome home;
    const std::tuple<const char *, QByteArray, QStringList> cases[] = {
        {"unix lines",
         "E 07:00 08:00 01\nD  7:30 22:00 02\n",
         {"E 07:00 08:00 01", "D  7:30 22:00 02"}},
        {"windows lines, blanks dropped",
         "M 06:00 07:00 03\r\n   \r\n\r\nU 09:00 10:00 04 ",
         {"M 06:00 07:00 03", "U 09:00 10:00 04 "}},
    };
    for (const auto &[name, bytes, expected] : cases)
        EXPECT_EQ(LoadAutoList(home.write(QStringLiteral("autolist.txt"), bytes)), expected)
            << name;

    // Saving round-trips and a failed save never loses the old file.
    const QString file = home.file(QStringLiteral("autolist.txt"));
    const QStringList list = {"E 07:00 08:00 01", QStringLiteral(u"R 12:00 13:00 02 café")};
    ASSERT_TRUE(SaveAutoList(file, list));
    EXPECT_EQ(LoadAutoList(file), list);

    const QString blocked = home.file(QStringLiteral("blocked"));
    QDir().mkpath(blocked);
    EXPECT_FALSE(SaveAutoList(blocked, list));
    EXPECT_EQ(LoadAutoList(file), list);
}
