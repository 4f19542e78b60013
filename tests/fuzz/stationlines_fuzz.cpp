#include "tests/fuzz/stationreaders.h"

#include <cstddef>
#include <cstdint>

// Any bytes as a station file, a preset line, a station playlist or a
// stream's title: no crash, no hang, no sanitizer report, and the rules
// checkStationReaders states hold.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (!checkStationReaders(QByteArrayView(reinterpret_cast<const char *>(data), qsizetype(size))))
        __builtin_trap();
    return 0;
}
