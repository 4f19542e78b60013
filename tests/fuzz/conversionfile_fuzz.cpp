#include "tools/conversionfile.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

// Any bytes must give lines that are not blank and not too long, each of
// which reads as a conversion: no crash, no hang, no sanitizer report.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArrayView bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const ConversionFile file = readConversionFile(bytes, QStringLiteral("fuzz.ccf"));
    if (!file.isText && !file.lines.isEmpty())
        __builtin_trap();
    for (const QString &line : file.lines) {
        if (line.trimmed().isEmpty() || line.size() > kMaxConversionLine)
            __builtin_trap();
        const Conversion c = parseConversion(line);
        // Numbers that are not finite read as 0, so a conversion never makes one.
        if (!std::isfinite(c.factor) || !std::isfinite(c.offset))
            __builtin_trap();
    }
    return 0;
}
