#include "radio/urllist.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

// Any bytes give at most 100 addresses of at most 8,192 characters, and a
// list written back reads the same.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QStringList list = UrlList::parse(bytes);
    if (list.size() > UrlList::kLimit)
        __builtin_trap();
    for (const QString &url : list)
        if (url.isEmpty() || url.size() > UrlList::kMaxLine)
            __builtin_trap();
    // A byte order mark is taken off the front of a file only.
    if (!list.isEmpty() && list.first().startsWith(QChar(0xFEFF)))
        return 0;
    if (UrlList::parse(UrlList::format(list)) != list)
        __builtin_trap();
    QStringList grown = list;
    UrlList::add(grown, QStringLiteral("http://fuzz.invalid/"));
    if (grown.size() > UrlList::kLimit)
        __builtin_trap();
    return 0;
}
