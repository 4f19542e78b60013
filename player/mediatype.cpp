#include "mediatype.h"

#include "id3tag.h"

#include <QStringList>

#include <cmath>

QString mediaExtension(const QString &path)
{
    const qsizetype dot = path.lastIndexOf(QLatin1Char('.'));
    return (dot < 0 ? path : path.mid(dot + 1)).toUpper();
}

QString deviceForSetting(const QString &mciDevice)
{
    if (mciDevice == QLatin1String("0"))
        return QStringLiteral("MPEGVideo");
    if (mciDevice == QLatin1String("1"))
        return QStringLiteral("MPEGVideo2");
    return QStringLiteral("ActiveMovie");
}

MediaType classifyMedia(const QString &path, const QString &mciDevice)
{
    struct Row
    {
        QStringList extensions;
        MediaType::Kind kind;
        const char *device; // null: the device the setting names
    };
    using K = MediaType::Kind;
    static const Row rows[] = {
        {{"MP2", "MP3", "MPA"}, K::Mpeg, nullptr},
        {{"MOD", "MTM", "FAR", "669", "OKT", "STM", "S3M", "NST", "WOW", "XM"},
         K::Module,
         "M4W_MCI"},
        {{"FLI", "FLC"}, K::Animation, "Animation"},
        {{"AWA", "AWM"}, K::Animation1, "Animation1"},
        {{"MMM"}, K::MMMovie, "MMMovie"},
        {{"CDA"}, K::CdTrack, "cdaudio"},
        {{"CUE"}, K::DiscImage, "cdaudio"},
        {{"BMP", "GIF", "JPG"}, K::Picture, "Delay"},
        {{"TXT", "DOC", "BAT", "COM", "EXE", "LNK"}, K::Placeholder, "Delay"},
    };

    const QString extension = mediaExtension(path);
    MediaType type;
    for (const Row &row : rows) {
        if (!row.extensions.contains(extension))
            continue;
        type.kind = row.kind;
        if (row.device)
            type.device = QString::fromLatin1(row.device);
        break;
    }
    if (type.device.isEmpty())
        type.device = deviceForSetting(mciDevice);
    if (type.kind == K::CdTrack) {
        // "Track05.cda": the number in the last six characters.
        const double number = leadingNumber(QStringView(path).right(6));
        type.cdTrack =
            std::isfinite(number) && std::abs(number) < 32768 ? int(std::nearbyint(number)) : 0;
    }
    return type;
}
