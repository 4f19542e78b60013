#include "cd/cddbreply.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

// Any bytes a server sends, read as an answer to a query and as a disc's
// entry: no crash, no hang, one title per track of the disc asked about.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const int tracks = data[0] % 100;
    const QString reply =
        decodeCddbReply(QByteArray(reinterpret_cast<const char *>(data + 1), qsizetype(size - 1)));
    const CddbMatch match = readQueryReply(reply);
    if (match.kind != CddbMatch::Kind::Found && !match.category.isEmpty())
        __builtin_trap();
    const CddbDiscEntry entry = readDiscReply(reply, tracks);
    if (entry.titles.size() != tracks)
        __builtin_trap();
    for (int i = 0; i < tracks; ++i)
        if (entry.titles[i] != CDDBField(reply, QStringLiteral("TTITLE%1").arg(i)))
            __builtin_trap();
    return 0;
}
