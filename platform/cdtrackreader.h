#pragma once

#include "platform/wavheader.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <memory>

typedef struct _CdIo CdIo_t;

// One track of a disc as a WAV file: a 44-byte header, then the track's
// sectors as the drive or image holds them (16-bit stereo at 44.1 kHz,
// little-endian), bit for bit. Any byte can be read next, so the media engine
// seeks in it like in a file. Each reader has its own handle on the disc and
// is used from one thread at a time.
class CdTrackReader
{
public:
    static constexpr int kHeaderBytes = kWavHeaderBytes;
    static constexpr int kSectorBytes = 2352;

    // Null when the disc cannot be opened or has no such audio track.
    static std::unique_ptr<CdTrackReader> open(const QString &playSource, int track);
    ~CdTrackReader();
    CdTrackReader(const CdTrackReader &) = delete;
    CdTrackReader &operator=(const CdTrackReader &) = delete;

    qint64 size() const { return kHeaderBytes + qint64(m_sectors) * kSectorBytes; }
    // False outside 0..size().
    bool seek(qint64 offset);
    // Up to `wanted` bytes from the position on; 0 at the end. A sector the
    // disc will not give reads as silence, so a scratch is a gap, not the end.
    qint64 read(char *buffer, qint64 wanted);

private:
    static constexpr int kBlockSectors = 27; // ~64 KiB per read from the disc

    CdTrackReader() = default;
    const char *sector(qint32 index);

    CdIo_t *m_cdio = nullptr;
    qint32 m_firstLsn = 0;
    qint32 m_sectors = 0;
    qint64 m_pos = 0;
    std::array<char, kHeaderBytes> m_header{};
    QByteArray m_block;
    qint32 m_blockStart = -1; // first sector in m_block
    bool m_warned = false;
};
