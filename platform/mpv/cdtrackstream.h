#pragma once

struct mpv_handle;

// A track of an audio CD opens in mpv as "cdtrack://N/disc": a stream of our
// own that serves the track as a WAV file read from the drive or image by
// libcdio (see CdTrackReader). mpv then gives position, length, seeking and
// the end of the track as for any file, and the disc is read on mpv's
// reading thread, never on the UI thread.
namespace CdTrackStream {

// Once per mpv handle, after mpv_initialize.
bool registerProtocol(mpv_handle *mpv);

} // namespace CdTrackStream
