#include "app/mprisbridge.h"

#include <QFile>
#include <gtest/gtest.h>

// A desktop that asks the bus what Velto plays must hear what the menu entry
// opens, or a file manager offers Velto for files it then refuses.
TEST(MprisBridge, OffersTheTypesTheMenuEntryOpens)
{
    QFile entry(QStringLiteral(VELTO_DATA_DIR "/../dist/org.velto.Velto.desktop"));
    ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
    QStringList opened;
    for (const QByteArray &line : entry.readAll().split('\n'))
        if (line.startsWith("MimeType="))
            opened = QString::fromUtf8(line.mid(9)).split(u';', Qt::SkipEmptyParts);
    ASSERT_FALSE(opened.isEmpty());
    QStringList offered = MprisBridge::mimeTypes();
    opened.sort();
    offered.sort();
    EXPECT_EQ(offered, opened);
}
