#include "radio/urllist.h"

#include "support/printers.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QStringList numbered(int from, int to)
{
    QStringList list;
    for (int i = from; i <= to; ++i)
        list << QStringLiteral("http://u%1/").arg(i);
    return list;
}

} // namespace

TEST(UrlList, AnAddressBeginningWithWwwGetsHttpInFront)
{
    const std::pair<QString, QString> cases[] = {
        {"WwW.Example.org/a", "http://WwW.Example.org/a"},
        {"wwwexample", "http://wwwexample"},
        {"http://www.example.org", "http://www.example.org"},
        {"ww.example.org", "ww.example.org"},
        {" www.example.org", " www.example.org"},
    };
    for (const auto &[in, out] : cases)
        EXPECT_EQ(UrlList::withScheme(in), out) << in.toStdString();
}

TEST(UrlList, KeepsEachAddressOnceAndAHundredOfThem)
{
    QStringList list = {"http://a/", "http://b/"};
    EXPECT_FALSE(UrlList::add(list, "http://a/"));
    EXPECT_EQ(list, QStringList({"http://a/", "http://b/"}));
    EXPECT_TRUE(UrlList::add(list, "http://A/")) << "compared exactly";
    EXPECT_EQ(list.size(), 3);

    // The 101st entry pushes out the one at index 99: the newest always stays.
    list = numbered(0, 99);
    EXPECT_TRUE(UrlList::add(list, "http://new1/"));
    EXPECT_EQ(list, numbered(0, 98) << "http://new1/");
    EXPECT_FALSE(UrlList::add(list, "http://u50/"));
    EXPECT_EQ(list.size(), 100);
}

TEST(UrlList, ReadsOneAddressALineWhateverTheBytes)
{
    const std::pair<QByteArray, QStringList> cases[] = {
        {"http://a/\nhttp://b/\n", {"http://a/", "http://b/"}},
        {"\xEF\xBB\xBFhttp://a/\r\n\r\n  http://b/  \rhttp://c/",
         {"http://a/", "http://b/", "http://c/"}},
        {"http://caf\xE9/\n", {QString::fromUtf8("http://caf\xC3\xA9/")}},
    };
    for (const auto &[bytes, list] : cases)
        EXPECT_EQ(UrlList::parse(bytes), list) << bytes.left(40).constData();
    const QByteArray longest(UrlList::kMaxLine, 'x');
    EXPECT_EQ(UrlList::parse(longest + "\n" + longest + "x\n"),
              QStringList{QString::fromLatin1(longest)});
    EXPECT_EQ(UrlList::parse(UrlList::format(numbered(0, 149))), numbered(0, 99))
        << "a longer list is read up to the limit";
}

TEST(UrlList, FileIsWrittenWholeAndReadBack)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("url-list.txt"));
    EXPECT_TRUE(UrlList::load(file).isEmpty());
    const QStringList list = {"http://a/", "file:///tmp/x y.html",
                              QString::fromUtf8("http://\xC3\xA9t\xC3\xA9/")};
    ASSERT_TRUE(UrlList::save(file, list));
    EXPECT_EQ(UrlList::load(file), list);
    ASSERT_TRUE(UrlList::save(file, {"http://a/", "http://b/\nhttp://c/"}));
    EXPECT_EQ(UrlList::load(file), QStringList({"http://a/"})) << "no address splits in two";

    EXPECT_FALSE(UrlList::save(dir.filePath(QStringLiteral("folder/url-list.txt")), list))
        << "a folder stands where the file would go";
}
