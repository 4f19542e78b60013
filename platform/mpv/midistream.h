#pragma once

#include <QByteArray>
#include <QString>

struct mpv_handle;

// mpv plays no MIDI, so a MIDI file opens in mpv as "velto-midi:///path": a
// stream of our own that serves the song as a WAV file, rendered by FluidSynth
// with a General MIDI sound bank as mpv reads it. mpv then gives position,
// length, seeking, pausing and the output level as for any other file, and the
// rendering runs on mpv's reading thread, never on the UI thread.
namespace MidiStream {

// Extensions played this way (upper case), when the file's head also says MIDI.
bool hasMidiName(const QString &path);
// Reads the first bytes only.
bool isMidiFile(const QString &path);

// The sound bank used: $VELTO_SOUNDFONT when set (and nothing else then), else
// the first General MIDI bank of the Debian packages that exists. Empty when none.
QString soundBank();
QString missingBankText();

QByteArray url(const QString &absolutePath);
// Once per mpv handle, after mpv_initialize.
bool registerProtocol(mpv_handle *mpv);

} // namespace MidiStream
