#include "cdtrackreader.h"

#include "cdiolog.h"

#include <QFile>
#include <QtDebug>

#include <cdio/cdio.h>

#include <algorithm>
#include <cstring>

std::unique_ptr<CdTrackReader> CdTrackReader::open(const QString &playSource, int track)
{
    quietCdioLog();
    CdIo_t *cdio = cdio_open(QFile::encodeName(playSource).constData(), DRIVER_UNKNOWN);
    if (!cdio)
        return nullptr;
    std::unique_ptr<CdTrackReader> reader(new CdTrackReader);
    reader->m_cdio = cdio;
    const track_t first = cdio_get_first_track_num(cdio);
    const track_t count = cdio_get_num_tracks(cdio);
    if (first == CDIO_INVALID_TRACK || count == CDIO_INVALID_TRACK || track < first ||
        track >= first + count || cdio_get_track_format(cdio, track_t(track)) != TRACK_FORMAT_AUDIO)
        return nullptr;
    const track_t next =
        track + 1 < first + count ? track_t(track + 1) : track_t(CDIO_CDROM_LEADOUT_TRACK);
    reader->m_firstLsn = cdio_get_track_lsn(cdio, track_t(track));
    const lsn_t end = cdio_get_track_lsn(cdio, next);
    if (reader->m_firstLsn == CDIO_INVALID_LSN || end == CDIO_INVALID_LSN ||
        end <= reader->m_firstLsn)
        return nullptr;
    reader->m_sectors = end - reader->m_firstLsn;
    reader->m_header = wavHeader(quint32(qint64(reader->m_sectors) * kSectorBytes), 44100);
    return reader;
}

CdTrackReader::~CdTrackReader()
{
    if (m_cdio)
        cdio_destroy(m_cdio);
}

bool CdTrackReader::seek(qint64 offset)
{
    if (offset < 0 || offset > size())
        return false;
    m_pos = offset;
    return true;
}

const char *CdTrackReader::sector(qint32 index)
{
    if (m_blockStart < 0 || index < m_blockStart ||
        index >= m_blockStart + m_block.size() / kSectorBytes) {
        const qint32 count = std::min<qint32>(kBlockSectors, m_sectors - index);
        m_block.resize(qsizetype(count) * kSectorBytes);
        m_blockStart = index;
        if (cdio_read_audio_sectors(m_cdio, m_block.data(), lsn_t(m_firstLsn + index),
                                    uint32_t(count)) != DRIVER_OP_SUCCESS) {
            if (!m_warned)
                qWarning("CD: sectors from %d could not be read; they play as silence",
                         m_firstLsn + index);
            m_warned = true;
            m_block.fill(0);
        }
    }
    return m_block.constData() + qsizetype(index - m_blockStart) * kSectorBytes;
}

qint64 CdTrackReader::read(char *buffer, qint64 wanted)
{
    qint64 done = 0;
    while (done < wanted && m_pos < size()) {
        qint64 n;
        if (m_pos < kHeaderBytes) {
            n = std::min(wanted - done, kHeaderBytes - m_pos);
            std::memcpy(buffer + done, m_header.data() + m_pos, size_t(n));
        } else {
            const qint64 data = m_pos - kHeaderBytes;
            const qint32 index = qint32(data / kSectorBytes);
            const qint64 within = data % kSectorBytes;
            n = std::min(wanted - done, kSectorBytes - within);
            std::memcpy(buffer + done, sector(index) + within, size_t(n));
        }
        done += n;
        m_pos += n;
    }
    return done;
}
