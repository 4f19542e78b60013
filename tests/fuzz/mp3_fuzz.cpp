#include "fuzztarget.h"

#include "player/id3tag.h"
#include "player/mp3info.h"

#include <QFile>

namespace {

bool sameFields(const TagFields &a, const TagFields &b)
{
    return a.title == b.title && a.artist == b.artist && a.album == b.album && a.year == b.year &&
           a.comment == b.comment && a.track == b.track && a.genre == b.genre;
}

QByteArray contents(const QString &path)
{
    QFile in(path);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

} // namespace

// The input is a whole file. Its frame header and tag read the same from
// the file as from its bytes; saving the tag it shows changes nothing but
// the 128 bytes of the tag, and the saved tag reads back as saved.
VELTO_FUZZ_TARGET(mp3)
{
    const QString path = fuzzWriteScratch(QStringLiteral("track.mp3"), input);
    const QByteArray tail = input.right(256);
    const Mp3Info fromFile = GetMP3Info(path);
    if (input.size() < 256) {
        FUZZ_CHECK(!fromFile.examined);
    } else {
        const Mp3Info fromBytes = mp3InfoFromBytes(input.left(4), tail);
        FUZZ_CHECK(fromFile.examined);
        FUZZ_CHECK(fromFile.bitRate == fromBytes.bitRate);
        FUZZ_CHECK(fromFile.sampleRate == fromBytes.sampleRate);
        FUZZ_CHECK(fromFile.mode == fromBytes.mode);
        FUZZ_CHECK(fromFile.bitRateNumber == fromBytes.bitRateNumber);
        FUZZ_CHECK(sameFields(fieldsFromRecord(fromFile.tag), fieldsFromRecord(fromBytes.tag)));
    }

    const TagFields fields = fieldsFromRecord(readTag(tail));
    const TagWrite result = writeTag(path, fields);
    const QByteArray after = contents(path);
    const qsizetype marker = findTagMarker(tail);
    const qsizetype at = marker < 0 ? input.size() : input.size() - tail.size() + marker;
    FUZZ_CHECK(result == (marker < 0 ? TagWrite::Added : TagWrite::Updated));
    FUZZ_CHECK(after.size() == qMax(input.size(), at + 128));
    FUZZ_CHECK(after.left(at) == input.left(at));
    FUZZ_CHECK(after.mid(at + 128) == input.mid(at + 128));
    const qsizetype window = qMin<qsizetype>(after.size(), 256);
    FUZZ_CHECK(findTagMarker(after.right(256)) == at - (after.size() - window));
    FUZZ_CHECK(sameFields(fieldsFromRecord(readTag(after.right(256))), fields));
}
