#include "fuzztarget.h"

#include "radio/urllist.h"

// Any bytes give at most 100 addresses of at most 8,192 characters, and a
// list written back reads the same.
VELTO_FUZZ_TARGET(urllist)
{
    const QStringList list = UrlList::parse(input);
    FUZZ_CHECK(list.size() <= UrlList::kLimit);
    for (const QString &url : list)
        FUZZ_CHECK(!url.isEmpty() && url.size() <= UrlList::kMaxLine);
    // A byte order mark is taken off the front of a file only.
    if (!list.isEmpty() && list.first().startsWith(QChar(0xFEFF)))
        return;
    FUZZ_CHECK(UrlList::parse(UrlList::format(list)) == list);
    QStringList grown = list;
    UrlList::add(grown, QStringLiteral("http://fuzz.invalid/"));
    FUZZ_CHECK(grown.size() <= UrlList::kLimit);
}
