#include "cd/cddbreply.h"
#include "fuzztarget.h"

// Any bytes a server sends, read as an answer to a query and as a disc's
// entry: no crash, no hang, one title per track of the disc asked about.
VELTO_FUZZ_TARGET(cddbreply)
{
    if (input.isEmpty())
        return;
    // The first byte is the track count of the disc asked about.
    const int tracks = quint8(input[0]) % 100;
    const QString reply = decodeCddbReply(input.mid(1));
    const CddbMatch match = readQueryReply(reply);
    FUZZ_CHECK(match.kind == CddbMatch::Kind::Found || match.category.isEmpty());
    const CddbDiscEntry entry = readDiscReply(reply, tracks);
    FUZZ_CHECK(entry.titles.size() == tracks);
    for (int i = 0; i < tracks && i < entry.titles.size(); ++i)
        FUZZ_CHECK(entry.titles[i] == CDDBField(reply, QStringLiteral("TTITLE%1").arg(i)));
}
