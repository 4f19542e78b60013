#include "cdtrackstream.h"

#include "platform/cddrive.h"
#include "platform/cdtrackreader.h"

#include <mpv/client.h>
#include <mpv/stream_cb.h>

namespace {

int openStream(void *, char *uri, mpv_stream_cb_info *info)
{
    int track = 0;
    QString source;
    if (!parseCdTrackUrl(QByteArray(uri), track, source))
        return MPV_ERROR_LOADING_FAILED;
    std::unique_ptr<CdTrackReader> reader = CdTrackReader::open(source, track);
    if (!reader)
        return MPV_ERROR_LOADING_FAILED;
    info->cookie = reader.release();
    info->read_fn = [](void *cookie, char *buffer, uint64_t n) -> int64_t {
        return static_cast<CdTrackReader *>(cookie)->read(buffer,
                                                          qint64(std::min<uint64_t>(n, 1 << 30)));
    };
    info->seek_fn = [](void *cookie, int64_t offset) -> int64_t {
        return static_cast<CdTrackReader *>(cookie)->seek(offset) ? offset
                                                                  : int64_t(MPV_ERROR_GENERIC);
    };
    info->size_fn = [](void *cookie) -> int64_t {
        return static_cast<CdTrackReader *>(cookie)->size();
    };
    info->close_fn = [](void *cookie) { delete static_cast<CdTrackReader *>(cookie); };
    return 0;
}

} // namespace

namespace CdTrackStream {

bool registerProtocol(mpv_handle *mpv)
{
    return mpv_stream_cb_add_ro(mpv, "cdtrack", nullptr, openStream) >= 0;
}

} // namespace CdTrackStream
