#include "fuzztarget.h"

#include "skin/skindir.h"
#include "skin/skinimport.h"

// Any bytes give a header the skin browser can list or leave out; an older
// skin converts to one whose header the browser reads as a Velto player skin.
VELTO_FUZZ_TARGET(skinheader)
{
    const SkinDirHeader header = parseSkinDirHeader(input);
    for (const QString &filter : {QStringLiteral("ALL"), QStringLiteral("PLAYER")})
        skinListed(header, filter, input.size() % 2 == 1);
    const QString entry = skinEntry(header.displayName, header.displayName);
    FUZZ_CHECK(skinFileOfEntry(entry).endsWith(QLatin1String(".skin")));
    const QByteArray converted = SkinImport::convert(input);
    if (converted.isEmpty())
        return;
    const SkinDirHeader imported = parseSkinDirHeader(converted);
    FUZZ_CHECK(imported.signature == QLatin1String("Velto Skin"));
    FUZZ_CHECK(imported.type == QLatin1String("PLAYER"));
    FUZZ_CHECK(SkinImport::convert(converted).isEmpty());
}
