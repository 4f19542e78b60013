#pragma once

#include <QByteArray>
#include <QString>

class QIODevice;

// A picture stored inside a media file's own tags.
struct EmbeddedPicture
{
    QByteArray data;  // the image file's bytes; empty when there is none
    QString mimeType; // as the tag names it ("image/jpeg", "JPG", ...), may be empty
    int type = -1;    // 3 = front cover, as ID3v2, FLAC and Vorbis number them
};

// The front cover (else the first picture) of an MP3 (ID3v2 APIC or PIC
// frame), FLAC (PICTURE block, or an ID3v2 tag in front of it), Ogg Vorbis,
// Opus or Ogg FLAC (METADATA_BLOCK_PICTURE comment) or MP4/M4A ("covr" atom)
// file. Reads only the tag areas, seeking past the audio; pictures above
// kMaxPictureBytes and frames that are compressed or encrypted are skipped.
EmbeddedPicture readEmbeddedPicture(QIODevice &in);

// The same from a whole ID3v2 tag (header included).
EmbeddedPicture pictureFromId3v2(const QByteArray &tag);
// The body of a FLAC PICTURE metadata block (also what METADATA_BLOCK_PICTURE
// comments hold, base64 encoded).
EmbeddedPicture pictureFromFlacBlock(const QByteArray &block);
// A Vorbis comment packet or block: vendor, then "KEY=value" entries; the
// framing of Vorbis ("\x03vorbis") or Opus ("OpusTags") removed.
EmbeddedPicture pictureFromVorbisComments(const QByteArray &comments);

constexpr qint64 kMaxPictureBytes = 32 * 1024 * 1024;
