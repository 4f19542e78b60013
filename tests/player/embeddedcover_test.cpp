#include "player/embeddedcover.h"
#include "support/testbytes.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

QByteArray raw(std::initializer_list<quint32> values)
{
    QByteArray bytes;
    for (const quint32 v : values)
        bytes += char(v & 0xFF);
    return bytes;
}

QByteArray le32(quint32 v)
{
    return raw({v, v >> 8, v >> 16, v >> 24});
}

QByteArray syncsafe(quint32 v)
{
    return raw({(v >> 21) & 0x7F, (v >> 14) & 0x7F, (v >> 7) & 0x7F, v & 0x7F});
}

// Picture bytes with FF 00 and FF E0 in them, so unsynchronisation matters.
QByteArray pictureBytes(char mark)
{
    return QByteArray("\xFF\xD8\xFF\xE0pic-") + mark + QByteArray("\xFF\x00\xFF", 3) + "end";
}

QByteArray unsynchronise(const QByteArray &bytes)
{
    QByteArray out;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        out += bytes[i];
        if (quint8(bytes[i]) == 0xFF &&
            (i + 1 == bytes.size() || bytes[i + 1] == 0 || quint8(bytes[i + 1]) >= 0xE0))
            out += '\0';
    }
    return out;
}

QByteArray apicBody(int type, const QByteArray &data, int encoding = 0)
{
    const QByteArray description =
        encoding == 1 ? QByteArray("\xFF\xFEx\0\0\0", 6) : QByteArray("desc\0", 5);
    return char(encoding) + QByteArray("image/jpeg\0", 11) + char(type) + description + data;
}

// An ID3v2.3 frame: header and body.
QByteArray frame3(const char *id, const QByteArray &body)
{
    return QByteArray(id) + be32(quint32(body.size())) + QByteArray(2, '\0') + body;
}

QByteArray id3(int major, int flags, const QByteArray &frames)
{
    return "ID3" + raw({quint32(major), 0, quint32(flags)}) + syncsafe(quint32(frames.size())) +
           frames;
}

QByteArray flacBlock(int type, const QByteArray &data)
{
    return be32(quint32(type)) + be32(9) + "image/png" + be32(4) + "desc" + QByteArray(16, '\0') +
           be32(quint32(data.size())) + data;
}

QByteArray flacFile(const QList<QByteArray> &pictures)
{
    QByteArray file = "fLaC";
    file += raw({0, 0, 0, 34}) + QByteArray(34, '\x11'); // STREAMINFO
    for (qsizetype i = 0; i < pictures.size(); ++i) {
        const bool last = i + 1 == pictures.size();
        const QByteArray &block = pictures[i];
        file += char((last ? 0x80 : 0) | 6) + be32(quint32(block.size())).mid(1) + block;
    }
    return file + QByteArray(64, '\x22'); // frames
}

QByteArray vorbisComments(const QList<QByteArray> &entries)
{
    QByteArray c = le32(5) + "Velto" + le32(quint32(entries.size()));
    for (const QByteArray &e : entries)
        c += le32(quint32(e.size())) + e;
    return c;
}

// Ogg pages of one stream; each packet may spill over several pages, as long
// comment packets do.
QByteArray oggFile(const QList<QByteArray> &packets)
{
    QByteArray lacing, body, file;
    int seq = 0;
    auto flush = [&] {
        if (lacing.isEmpty())
            return;
        file += "OggS" + raw({0, seq == 0 ? 2u : 0u}) + QByteArray(8, '\0') + le32(77) +
                le32(quint32(seq)) + le32(0) + char(lacing.size()) + lacing + body;
        ++seq;
        lacing.clear();
        body.clear();
    };
    for (const QByteArray &p : packets) {
        qsizetype at = 0;
        while (true) {
            const qsizetype take = qMin<qsizetype>(255, p.size() - at);
            lacing += char(take);
            body += p.mid(at, take);
            at += take;
            if (lacing.size() == 255 || body.size() >= 600)
                flush();
            if (take < 255)
                break;
        }
    }
    flush();
    return file + "OggS-audio-follows";
}

QByteArray box(const char *type, const QByteArray &body)
{
    return be32(quint32(body.size() + 8)) + type + body;
}

QByteArray mp4File(const QByteArray &picture)
{
    const QByteArray data = box("data", be32(14) + be32(0) + picture);
    const QByteArray ilst =
        box("ilst", box("\xA9nam", box("data", be32(1) + be32(0) + "Title")) + box("covr", data));
    const QByteArray hdlr = box("hdlr", QByteArray(25, '\0'));
    const QByteArray meta = box("meta", QByteArray(4, '\0') + hdlr + ilst);
    const QByteArray moov = box("moov", box("mvhd", QByteArray(100, '\0')) + box("udta", meta));
    return box("ftyp", "M4A \0\0\0\0isomM4A ") + box("mdat", QByteArray(300, '\x33')) + moov;
}

EmbeddedPicture readBytes(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return readEmbeddedPicture(buffer);
}

} // namespace

TEST(EmbeddedPicture, FindsThePictureInEachKindOfFileAndNoneInBrokenOnes)
{
    const QByteArray front = pictureBytes('F');
    const QByteArray other = pictureBytes('O');

    // Syncsafe frame size, a data length word and per-frame unsynchronisation.
    const QByteArray v24body = unsynchronise(be32(0) + apicBody(3, front, 1));
    const QByteArray v24 =
        id3(4, 0, "APIC" + syncsafe(quint32(v24body.size())) + raw({0, 0x03}) + v24body);
    const QByteArray v23unsync = id3(3, 0x80, unsynchronise(frame3("APIC", apicBody(3, front))));
    const QByteArray v22body = QByteArray(1, 0) + "JPG" + char(3) + QByteArray("d\0", 2) + front;
    const QByteArray v22 = id3(2, 0, "PIC" + be32(quint32(v22body.size())).mid(1) + v22body);
    const QByteArray flacPicture = flacBlock(3, front);
    const QByteArray vorbisEntry =
        "METADATA_BLOCK_PICTURE=" + flacBlock(3, front + QByteArray(700, 'x')).toBase64();
    const QByteArray vorbisId = "\x01vorbis" + QByteArray(23, '\0');

    // What the file is, its bytes, the picture expected and its type.
    const std::tuple<const char *, QByteArray, QByteArray, int> cases[] = {
        {"ID3v2.3, front cover chosen over the first picture",
         id3(3, 0,
             frame3("TIT2", QByteArray("\0Title", 6)) + frame3("APIC", apicBody(0, other)) +
                 frame3("APIC", apicBody(3, front)) + QByteArray(20, '\0')) +
             "audio",
         front, 3},
        {"ID3v2.3, whole tag unsynchronised", v23unsync, front, 3},
        {"ID3v2.3, no front cover", id3(3, 0, frame3("APIC", apicBody(0, other))), other, 0},
        {"ID3v2.4, UTF-16, frame unsynchronised with data length", v24, front, 3},
        {"ID3v2.2 PIC", v22, front, 3},
        {"FLAC picture block", flacFile({flacBlock(0, other), flacPicture}), front, 3},
        {"FLAC behind an ID3v2 tag", id3(3, 0, QByteArray(10, '\0')) + flacFile({flacPicture}),
         front, 3},
        {"Ogg Vorbis comment across pages",
         oggFile({vorbisId, "\x03vorbis" + vorbisComments({"TITLE=x", vorbisEntry}), "setup"}),
         front + QByteArray(700, 'x'), 3},
        {"Ogg FLAC",
         oggFile({"\177FLAC" + QByteArray(46, 0),
                  char(0x86) + be32(quint32(flacPicture.size())).mid(1) + flacPicture}),
         front, 3},
        {"Vorbis comment, the old cover art field",
         oggFile({vorbisId,
                  "\x03vorbis" + vorbisComments({"COVERARTMIME=image/png",
                                                 "coverart=" + QByteArray("PNG").toBase64()})}),
         "PNG", -1},
        {"MP4 covr in moov/udta/meta", mp4File(front), front, 3},

        // Sizes past the end give no picture, and are refused without reading far.
        {"ID3 tag claims 256 MB",
         QByteArray("ID3\x03\0\0\x7F\x7F\x7F\x7F", 10) + QByteArray(40, 'A'), "", -1},
        {"FLAC block of 16 MB", "fLaC\x86\xFF\xFF\xFF" + QByteArray(50, 'x'), "", -1},
        {"Vorbis comment count of four billion",
         oggFile({"\x01vorbis", "\x03vorbis" + le32(0) + le32(0xFFFFFFFF) + le32(0xFFFFFFF0)}), "",
         -1},
        {"MP4 box with a 64-bit size past the end",
         box("ftyp", "isom") + be32(1) + "moov" + be32(0x7FFFFFFF) + be32(0xFFFFFFFF), "", -1},
    };
    for (const auto &[what, file, expected, type] : cases) {
        SCOPED_TRACE(what);
        const EmbeddedPicture pic = readBytes(file);
        EXPECT_EQ(pic.data, expected);
        EXPECT_EQ(pic.type, type);
    }
}
