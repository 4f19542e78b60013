#include "skin/skindir.h"
#include "skin/skinimport.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

// Any bytes give a header the skin browser can list or leave out; an older
// skin converts to one whose header the browser reads as a Velto player skin.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const SkinDirHeader header = parseSkinDirHeader(bytes);
    for (const QString &filter : {QStringLiteral("ALL"), QStringLiteral("PLAYER")})
        skinListed(header, filter, size % 2 == 1);
    const QString entry = skinEntry(header.displayName, header.displayName);
    if (!skinFileOfEntry(entry).endsWith(QLatin1String(".skin")))
        __builtin_trap();
    const QByteArray converted = SkinImport::convert(bytes);
    if (converted.isEmpty())
        return 0;
    const SkinDirHeader imported = parseSkinDirHeader(converted);
    if (imported.signature != QLatin1String("Velto Skin") ||
        imported.type != QLatin1String("PLAYER") || !SkinImport::convert(converted).isEmpty())
        __builtin_trap();
    return 0;
}
