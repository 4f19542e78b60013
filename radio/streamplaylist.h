#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringList>
#include <QUrl>

// Station playlists as stations publish them: a PLS or M3U file that names
// the stream addresses, best first.

// The entries of a PLS or M3U file in their order, relative ones resolved
// against base. PLS is told by its "[playlist]" section or its "FileN="
// keys; anything else is read as M3U. At most kMaxEntries are returned.
QStringList streamPlaylistEntries(QByteArrayView bytes, const QUrl &base);
constexpr int kMaxStreamPlaylistEntries = 100;

// An address whose path ends in ".pls" or ".m3u": a playlist to read before
// playing, not a stream.
bool isStreamPlaylistAddress(const QString &address);
// The entries of a playlist file that names web addresses only (a station's
// "listen.pls" saved from a web page); empty for any other playlist, whose
// web entries stay in the player.
QStringList stationPlaylist(QByteArrayView bytes, const QUrl &base);
