#include "fuzztarget.h"
#include "tools/conversionfile.h"

#include <cmath>

// Any bytes give lines that are not blank and not too long, each of which
// reads as a conversion whose numbers are finite.
VELTO_FUZZ_TARGET(ccf)
{
    const ConversionFile file = readConversionFile(input, QStringLiteral("fuzz.ccf"));
    FUZZ_CHECK(file.isText || file.lines.isEmpty());
    for (const QString &line : file.lines) {
        FUZZ_CHECK(!line.trimmed().isEmpty() && line.size() <= kMaxConversionLine);
        const Conversion c = parseConversion(line);
        FUZZ_CHECK(std::isfinite(c.factor) && std::isfinite(c.offset));
    }
}
