#include "fuzztarget.h"

#include "skin/skinreader.h"

#include <QBuffer>

// The skin folder does not exist, so bitmap look-ups stay cheap.
VELTO_FUZZ_TARGET(skin)
{
    QByteArray bytes = input;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const SkinDescription d = readSkin(buffer, QStringLiteral("/nonexistent-velto-skin-folder"));
    FUZZ_CHECK(d.buttons.size() <= 120);
    FUZZ_CHECK(d.keyTable.size() == 21);

    buffer.seek(0);
    FUZZ_CHECK(readSkinHeader(buffer).accepted == d.accepted);
}
