#include "embeddedcover.h"

#include <QIODevice>
#include <QList>

#include <algorithm>
#include <optional>

namespace {

constexpr int kFrontCover = 3;

quint32 be32(const QByteArray &b, qsizetype at)
{
    if (at < 0 || at + 4 > b.size())
        return 0;
    return quint32(quint8(b[at])) << 24 | quint32(quint8(b[at + 1])) << 16 |
           quint32(quint8(b[at + 2])) << 8 | quint32(quint8(b[at + 3]));
}

quint32 le32(const QByteArray &b, qsizetype at)
{
    if (at < 0 || at + 4 > b.size())
        return 0;
    return quint32(quint8(b[at])) | quint32(quint8(b[at + 1])) << 8 |
           quint32(quint8(b[at + 2])) << 16 | quint32(quint8(b[at + 3])) << 24;
}

// Four 7-bit bytes, as ID3v2 writes sizes that must never look like a sync word.
quint32 syncsafe(const QByteArray &b, qsizetype at)
{
    if (at < 0 || at + 4 > b.size())
        return 0;
    return quint32(quint8(b[at]) & 0x7F) << 21 | quint32(quint8(b[at + 1]) & 0x7F) << 14 |
           quint32(quint8(b[at + 2]) & 0x7F) << 7 | quint32(quint8(b[at + 3]) & 0x7F);
}

QByteArray readAt(QIODevice &in, qint64 pos, qint64 length)
{
    if (pos < 0 || length <= 0 || pos >= in.size() || !in.seek(pos))
        return {};
    return in.read(qMin(length, qMax<qint64>(0, in.size() - pos)));
}

// Undoes ID3v2 unsynchronisation: every FF 00 was an FF.
QByteArray resynchronise(const QByteArray &bytes)
{
    QByteArray out;
    out.reserve(bytes.size());
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        out += bytes[i];
        if (quint8(bytes[i]) == 0xFF && i + 1 < bytes.size() && bytes[i + 1] == 0)
            ++i;
    }
    return out;
}

// Index just past a text that ends with the terminator of its ID3v2 encoding
// (one NUL, or two on an even offset for UTF-16); -1 when it never ends.
qsizetype pastText(const QByteArray &b, qsizetype from, int encoding)
{
    if (encoding == 1 || encoding == 2) {
        for (qsizetype i = from; i + 1 < b.size(); i += 2) {
            if (b[i] == 0 && b[i + 1] == 0)
                return i + 2;
        }
        return -1;
    }
    const qsizetype nul = b.indexOf('\0', from);
    return nul < 0 ? -1 : nul + 1;
}

// APIC (v2.3, v2.4): encoding, MIME type, picture type, description, data.
// PIC (v2.2) has a three-letter image format in place of the MIME type.
EmbeddedPicture id3Picture(const QByteArray &frame, bool threeLetterFormat)
{
    if (frame.size() < 2)
        return {};
    const int encoding = quint8(frame[0]);
    EmbeddedPicture pic;
    qsizetype at = 1;
    if (threeLetterFormat) {
        pic.mimeType = QString::fromLatin1(frame.mid(1, 3));
        at = 4;
    } else {
        const qsizetype end = pastText(frame, 1, 0);
        if (end < 0)
            return {};
        pic.mimeType = QString::fromLatin1(frame.mid(1, end - 2));
        at = end;
    }
    if (at >= frame.size())
        return {};
    pic.type = quint8(frame[at]);
    const qsizetype data = pastText(frame, at + 1, encoding);
    if (data < 0 || data >= frame.size())
        return {};
    pic.data = frame.mid(data);
    return pic;
}

// Keeps the first picture and stops looking once a front cover turned up.
struct Choice
{
    EmbeddedPicture best;
    bool offer(EmbeddedPicture pic)
    {
        if (pic.data.isEmpty() || pic.data.size() > kMaxPictureBytes)
            return false;
        if (best.data.isEmpty() || (pic.type == kFrontCover && best.type != kFrontCover))
            best = std::move(pic);
        return best.type == kFrontCover;
    }
};

bool frameIdChar(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

EmbeddedPicture flacPictures(QIODevice &in, qint64 pos)
{
    Choice choice;
    for (int blocks = 0; blocks < 1024; ++blocks) {
        const QByteArray header = readAt(in, pos, 4);
        if (header.size() < 4)
            break;
        const int type = quint8(header[0]) & 0x7F;
        const bool last = quint8(header[0]) & 0x80;
        const qint64 length = be32(header, 0) & 0xFFFFFF;
        if (type == 127)
            break;
        if ((type == 6 || type == 4) && length <= kMaxPictureBytes * 2) {
            const QByteArray block = readAt(in, pos + 4, length);
            EmbeddedPicture pic =
                type == 6 ? pictureFromFlacBlock(block) : pictureFromVorbisComments(block);
            if (choice.offer(std::move(pic)))
                break;
        }
        if (last)
            break;
        pos += 4 + length;
    }
    return choice.best;
}

// The header packets of the first logical stream of an Ogg file, until
// `wanted` are complete. Pages of other streams are passed over.
QList<QByteArray> oggPackets(QIODevice &in, int wanted)
{
    QList<QByteArray> packets;
    QByteArray current;
    qint64 pos = 0;
    qint64 total = 0;
    quint32 serial = 0;
    bool first = true;
    // Header packets sit at the start; a file that has none there has none.
    while (packets.size() < wanted && pos <= kMaxPictureBytes * 4) {
        const QByteArray header = readAt(in, pos, 27);
        if (header.size() < 27 || !header.startsWith("OggS"))
            break;
        const int segments = quint8(header[26]);
        const QByteArray table = readAt(in, pos + 27, segments);
        if (table.size() < segments)
            break;
        qint64 bodySize = 0;
        for (const char s : table)
            bodySize += quint8(s);
        const qint64 body = pos + 27 + segments;
        pos = body + bodySize;
        const quint32 pageSerial = le32(header, 14);
        if (first)
            serial = pageSerial;
        first = false;
        if (pageSerial != serial)
            continue;
        total += bodySize;
        if (total > kMaxPictureBytes * 2)
            break;
        const QByteArray data = readAt(in, body, bodySize);
        if (data.size() < bodySize)
            break;
        qsizetype at = 0;
        for (const char s : table) {
            const int length = quint8(s);
            current += data.mid(at, length);
            at += length;
            if (length < 255) {
                packets << current;
                current.clear();
                if (packets.size() >= wanted)
                    break;
            }
        }
    }
    return packets;
}

EmbeddedPicture oggPictures(QIODevice &in)
{
    const QList<QByteArray> packets = oggPackets(in, 8);
    if (packets.size() < 2)
        return {};
    const QByteArray &id = packets[0];
    if (id.startsWith("\x7F"
                      "FLAC")) {
        // Ogg FLAC: every header packet after the first is one metadata block.
        Choice choice;
        for (qsizetype n = 1; n < packets.size(); ++n) {
            const QByteArray &block = packets[n];
            if (block.size() < 4)
                break;
            const int type = quint8(block[0]) & 0x7F;
            EmbeddedPicture pic;
            if (type == 6)
                pic = pictureFromFlacBlock(block.mid(4));
            else if (type == 4)
                pic = pictureFromVorbisComments(block.mid(4));
            if (choice.offer(std::move(pic)) || (quint8(block[0]) & 0x80))
                break;
        }
        return choice.best;
    }
    const QByteArray &comments = packets[1];
    if (comments.startsWith("\x03vorbis"))
        return pictureFromVorbisComments(comments.mid(7));
    if (comments.startsWith("OpusTags"))
        return pictureFromVorbisComments(comments.mid(8));
    return {};
}

struct Box
{
    QByteArray type;
    qint64 body = 0; // first byte after the header
    qint64 end = 0;  // first byte after the box
};

// The boxes between start and end, in order; stops at the first one that
// does not fit.
QList<Box> mp4Boxes(QIODevice &in, qint64 start, qint64 end)
{
    QList<Box> boxes;
    qint64 pos = start;
    while (pos + 8 <= end && boxes.size() < 4096) {
        const QByteArray header = readAt(in, pos, 16);
        if (header.size() < 8)
            break;
        qint64 size = be32(header, 0);
        qint64 body = pos + 8;
        if (size == 1) {
            if (header.size() < 16)
                break;
            const quint64 large = quint64(be32(header, 8)) << 32 | be32(header, 12);
            if (large > quint64(end - pos))
                break;
            size = qint64(large);
            body = pos + 16;
        } else if (size == 0) {
            size = end - pos;
        }
        if (size < body - pos || size > end - pos)
            break;
        boxes << Box{header.mid(4, 4), body, pos + size};
        pos += size;
    }
    return boxes;
}

std::optional<Box> childBox(QIODevice &in, const Box &parent, const char *type, qint64 skip = 0)
{
    for (const Box &b : mp4Boxes(in, parent.body + skip, parent.end)) {
        if (b.type == type)
            return b;
    }
    return std::nullopt;
}

EmbeddedPicture mp4Picture(QIODevice &in)
{
    const Box file{QByteArray(), 0, in.size()};
    const std::optional<Box> moov = childBox(in, file, "moov");
    if (!moov)
        return {};
    // iTunes keeps the tags in moov/udta/meta; some writers put meta straight in moov.
    std::optional<Box> meta;
    if (const std::optional<Box> udta = childBox(in, *moov, "udta"))
        meta = childBox(in, *udta, "meta");
    if (!meta)
        meta = childBox(in, *moov, "meta");
    if (!meta)
        return {};
    // An ISO meta box carries version and flags first; QuickTime's does not.
    const qint64 skip = readAt(in, meta->body + 4, 4) == "hdlr" ? 0 : 4;
    const std::optional<Box> ilst = childBox(in, *meta, "ilst", skip);
    if (!ilst)
        return {};
    const std::optional<Box> covr = childBox(in, *ilst, "covr");
    if (!covr)
        return {};
    const std::optional<Box> data = childBox(in, *covr, "data");
    if (!data || data->end - data->body <= 8 || data->end - data->body - 8 > kMaxPictureBytes)
        return {};
    // data: a type word (13 JPEG, 14 PNG, 27 BMP), a locale word, the image.
    EmbeddedPicture pic;
    const quint32 kind = be32(readAt(in, data->body, 4), 0) & 0xFFFFFF;
    pic.mimeType = kind == 14   ? QStringLiteral("image/png")
                   : kind == 27 ? QStringLiteral("image/bmp")
                                : QStringLiteral("image/jpeg");
    pic.type = kFrontCover;
    pic.data = readAt(in, data->body + 8, data->end - data->body - 8);
    return pic;
}

} // namespace

EmbeddedPicture pictureFromId3v2(const QByteArray &tag)
{
    if (tag.size() < 10 || !tag.startsWith("ID3"))
        return {};
    const int major = quint8(tag[3]);
    const int flags = quint8(tag[5]);
    if (major < 2 || major > 4)
        return {};
    QByteArray body = tag.mid(10, syncsafe(tag, 6));
    // v2.2 and v2.3 unsynchronise the whole tag; v2.4 marks each frame.
    const bool tagUnsync = flags & 0x80;
    if (tagUnsync && major < 4)
        body = resynchronise(body);
    qsizetype pos = 0;
    if (major == 3 && (flags & 0x40))
        pos = 4 + qsizetype(be32(body, 0)); // the size leaves itself out
    else if (major == 4 && (flags & 0x40))
        pos = qsizetype(syncsafe(body, 0));
    const qsizetype headerSize = major == 2 ? 6 : 10;

    Choice choice;
    while (pos >= 0 && pos + headerSize <= body.size()) {
        const QByteArray id = body.mid(pos, major == 2 ? 3 : 4);
        if (!std::all_of(id.begin(), id.end(), frameIdChar))
            break; // padding, or bytes that are no frame
        qsizetype size;
        int frameFlags = 0;
        if (major == 2) {
            size = qsizetype(be32(body, pos + 2) & 0xFFFFFF);
        } else {
            size = qsizetype(major == 4 ? syncsafe(body, pos + 4) : be32(body, pos + 4));
            frameFlags = quint8(body[pos + 9]);
        }
        if (size > body.size() - pos - headerSize)
            break;
        QByteArray frame = body.mid(pos + headerSize, size);
        pos += headerSize + size;
        if (id != "APIC" && id != "PIC")
            continue;
        if (major == 3) {
            if (frameFlags & 0xC0) // compressed or encrypted
                continue;
            if (frameFlags & 0x20)
                frame.remove(0, 1); // group mark
        } else if (major == 4) {
            if (frameFlags & 0x0C)
                continue;
            if (frameFlags & 0x40)
                frame.remove(0, 1);
            if (frameFlags & 0x01)
                frame.remove(0, 4); // data length word
            if ((frameFlags & 0x02) || tagUnsync)
                frame = resynchronise(frame);
        }
        if (choice.offer(id3Picture(frame, major == 2)))
            break;
    }
    return choice.best;
}

EmbeddedPicture pictureFromFlacBlock(const QByteArray &block)
{
    EmbeddedPicture pic;
    pic.type = int(be32(block, 0));
    qint64 at = 4;
    const qint64 mimeLength = be32(block, at);
    at += 4;
    if (mimeLength > block.size() - at)
        return {};
    pic.mimeType = QString::fromLatin1(block.mid(at, mimeLength));
    at += mimeLength;
    const qint64 descriptionLength = be32(block, at);
    at += 4;
    if (descriptionLength > block.size() - at)
        return {};
    at += descriptionLength + 16; // description, width, height, depth, colours
    const qint64 length = be32(block, at);
    at += 4;
    if (at > block.size() || length == 0 || length > block.size() - at)
        return {};
    pic.data = block.mid(at, length);
    return pic;
}

EmbeddedPicture pictureFromVorbisComments(const QByteArray &comments)
{
    qint64 at = 4 + qint64(le32(comments, 0)); // vendor
    const qint64 count = le32(comments, at);
    at += 4;
    Choice choice;
    EmbeddedPicture legacy;
    for (qint64 n = 0; n < count && at + 4 <= comments.size(); ++n) {
        const qint64 length = le32(comments, at);
        at += 4;
        if (length > comments.size() - at)
            break;
        const QByteArray entry = comments.mid(at, length);
        at += length;
        const qsizetype eq = entry.indexOf('=');
        if (eq < 0)
            continue;
        const QByteArray key = entry.left(eq).toUpper();
        if (key == "METADATA_BLOCK_PICTURE") {
            if (choice.offer(pictureFromFlacBlock(QByteArray::fromBase64(entry.mid(eq + 1)))))
                break;
        } else if (key == "COVERART" && legacy.data.isEmpty()) {
            legacy.data = QByteArray::fromBase64(entry.mid(eq + 1));
        } else if (key == "COVERARTMIME") {
            legacy.mimeType = QString::fromLatin1(entry.mid(eq + 1));
        }
    }
    if (choice.best.data.isEmpty())
        choice.offer(legacy);
    return choice.best;
}

EmbeddedPicture readEmbeddedPicture(QIODevice &in)
{
    if (!in.isOpen() || in.isSequential())
        return {};
    const QByteArray head = readAt(in, 0, 12);
    if (head.startsWith("ID3")) {
        qint64 tagSize = 10 + qint64(syncsafe(head, 6));
        if (head.size() > 5 && (quint8(head[5]) & 0x10))
            tagSize += 10; // footer
        EmbeddedPicture pic = pictureFromId3v2(readAt(in, 0, qMin(tagSize, kMaxPictureBytes * 2)));
        // FLAC files now and then carry an ID3v2 tag in front.
        if (pic.data.isEmpty() && readAt(in, tagSize, 4) == "fLaC")
            pic = flacPictures(in, tagSize + 4);
        return pic;
    }
    if (head.startsWith("fLaC"))
        return flacPictures(in, 4);
    if (head.startsWith("OggS"))
        return oggPictures(in);
    if (head.mid(4, 4) == "ftyp")
        return mp4Picture(in);
    return {};
}
