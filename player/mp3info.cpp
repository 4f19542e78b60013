#include "mp3info.h"

#include "mediatype.h"
#include "platform/readfile.h"

#include <QFile>

namespace {

// Entry n is the `width` characters from n * width, trimmed; past the end it
// is empty. Entry 0 of the bit rates reads "144" and index 15 shows nothing:
// skins lay out their labels for exactly these texts.
QString tableEntry(QLatin1String table, int width, int n)
{
    return QString(table.mid(n * width, width)).trimmed();
}

} // namespace

Mp3Info mp3InfoFromBytes(const QByteArray &head, const QByteArray &last256)
{
    static constexpr QLatin1String kBitRates(
        "144 16  32  48  56  64  80  96  112 128 160 192 224 256 320 ");
    static constexpr QLatin1String kSampleRates("44 48 32 ?? ");
    static constexpr QLatin1String kModes("stereo  jstereo dualch  mono    ");

    Mp3Info info;
    if (head.size() < 4)
        return info;
    info.examined = true;
    const quint8 b2 = quint8(head[2]);
    const quint8 b3 = quint8(head[3]);
    info.bitRate = tableEntry(kBitRates, 4, b2 >> 4);
    info.sampleRate = tableEntry(kSampleRates, 3, (b2 >> 2) & 3);
    info.mode = tableEntry(kModes, 8, b3 >> 6);
    info.bitRateNumber = int(leadingNumber(info.bitRate));
    info.sampleRateNumber = int(leadingNumber(info.sampleRate));
    info.tag = readTag(last256);
    return info;
}

Mp3Info GetMP3Info(const QString &file)
{
    if (file.isEmpty())
        return {};
    QFile in;
    if (openRegularFile(in, file, QIODevice::ReadOnly) != FileFault::None)
        return {};
    const qint64 size = in.size();
    if (size < 256)
        return {};
    const QByteArray head = in.read(4);
    if (!in.seek(size - 256))
        return {};
    const QByteArray last = in.read(256);
    if (head.size() < 4 || last.size() < 256)
        return {};
    return mp3InfoFromBytes(head, last);
}

bool isMpegAudio(const QString &file)
{
    return classifyMedia(file, QString()).kind == MediaType::Kind::Mpeg;
}
