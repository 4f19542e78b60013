#include "player/quickfind.h"
#include "support/printers.h"

#include <gtest/gtest.h>

namespace {

// A few hundred names, with the ones the cases look for among them.
QStringList someNames()
{
    QStringList names;
    for (int i = 0; i < 300; ++i)
        names << QStringLiteral("Track %1").arg(i, 3, 10, QLatin1Char('0'));
    names << QStringLiteral("beatles - help") << QStringLiteral("Bee Gees")
          << QStringLiteral("BEAR") << QStringLiteral("apple") << QStringLiteral("Zebra")
          << QStringLiteral("Émile") << QStringLiteral("Café") << QStringLiteral("CAFE DEL MAR")
          << QString() << QStringLiteral("Strauß");
    return names;
}

} // namespace

// The first name at or past what is typed, in case and accents folded; past
// every name, the last.
TEST(QuickFind, PrefixSearchFindsTheFirstNameAtOrPastTheText)
{
    const QuickFind find(someNames());
    const std::pair<const char *, const char *> cases[] = {
        {"a", "apple"},      {"emi", "\u00c9mile"},      {"track 1", "Track 100"}, {"bea", "BEAR"},
        {"beb", "Bee Gees"}, {"track 299", "Track 299"}, {"track 3", "Zebra"},     {"zz", "Zebra"},
    };
    for (const auto &[typed, name] : cases)
        EXPECT_EQ(find.names().value(find.FindMatch(QString::fromUtf8(typed))),
                  QString::fromUtf8(name))
            << typed;
    EXPECT_EQ(find.FindMatch(QString()), -1) << "an empty text changes nothing";
    EXPECT_EQ(QuickFind({}).FindMatch(QStringLiteral("a")), -1);
}

TEST(QuickFind, FoldsCaseAndAccentsAndSubstringSearchListsMatchesInListOrder)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Café", "CAFE"}, {"Ærø", "AERO"}, {"straße", "STRASSE"}, {"日本", "日本"}};
    for (const auto &[text, folded] : cases)
        EXPECT_EQ(QuickFind::fold(QString::fromUtf8(text)), QString::fromUtf8(folded)) << text;

    const QuickFind find(someNames());
    auto matches = [&find](const char *typed) {
        QStringList found;
        for (const int row : find.FindAny(QString::fromUtf8(typed)))
            found << find.names()[row];
        return found;
    };
    EXPECT_EQ(matches("cafe"), QStringList({"Café", "CAFE DEL MAR"}));
    EXPECT_EQ(matches("ee g"), QStringList({"Bee Gees"}));
    EXPECT_EQ(matches("track 01").size(), 10);
    EXPECT_TRUE(matches("xyz").isEmpty());
    EXPECT_EQ(matches("").size(), someNames().size() - 1) << "every name that is not empty";
}

TEST(QuickFind, RowsLeadBackToTheirOwnPlaylistEntries)
{
    const QuickFind find({QStringLiteral("b"), QStringLiteral("A"), QStringLiteral("B")});
    EXPECT_EQ(find.names(), QStringList({"A", "b", "B"})) << "equal names keep playlist order";
    QList<int> entries; // for rows -1 to 3
    for (int row = -1; row <= 3; ++row)
        entries << find.entryOf(row);
    EXPECT_EQ(entries, QList<int>({-1, 1, 0, 2, -1}));
}
