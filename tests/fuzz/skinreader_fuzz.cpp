#include "skin/skinreader.h"

#include <QBuffer>
#include <QByteArray>

#include <cstddef>
#include <cstdint>

// Any bytes must give a description: no crash, no hang, no sanitizer report.
// The skin folder does not exist, so bitmap look-ups stay cheap.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const SkinDescription d = readSkin(buffer, QStringLiteral("/nonexistent-velto-skin-folder"));
    if (d.buttons.size() > 120 || d.keyTable.size() != 21)
        __builtin_trap();

    buffer.seek(0);
    const SkinDescription header = readSkinHeader(buffer);
    if (header.accepted != d.accepted)
        __builtin_trap();
    return 0;
}
