#include "nowplaying.h"

#include "platform/mediadevice.h"
#include "player/id3tag.h"
#include "player/playerpart.h"
#include "player/playlist.h"

#include <QFileInfo>

NowPlaying nowPlaying(PlayerPart &player, const PlaylistState &playlist)
{
    const PlaybackState &s = player.state();
    NowPlaying now;
    now.state = !s.playing ? NowPlaying::State::Stopped
                : s.paused ? NowPlaying::State::Paused
                           : NowPlaying::State::Playing;
    now.count = int(playlist.PlNames.size());
    if (playlist.CurTrack >= 1 && playlist.CurTrack <= now.count)
        now.entry = playlist.CurTrack;
    now.shuffle = player.flags().Shuffle;
    now.repeat = player.flags().RepeatItem;
    if (now.entry == 0)
        return now;

    now.file = playlist.PlPath.value(now.entry - 1);
    const bool loaded = !s.CurDevice.isEmpty() && s.CurFile == now.file;
    const MediaDevice *device = loaded ? player.engine().device(s.CurMci) : nullptr;
    TagFields tag = loaded ? fieldsFromRecord(player.engine().tag()) : TagFields();
    // Most files carry newer tags than the 128-byte one, or only those.
    if (tag.title.isEmpty() && device) {
        const MediaDevice::FileTags own = device->fileTags();
        tag.title = own.title;
        tag.artist = own.artist;
        tag.album = own.album;
    }
    now.title = tag.title.isEmpty() ? playlist.PlNames.value(now.entry - 1) : tag.title;
    now.artist = tag.artist;
    now.album = tag.album;
    if (!loaded)
        return now;
    const QString cover = player.trackInfo().cover().CoverFile;
    // A picture inside the media file has no file of its own to point at.
    if (!cover.isEmpty() && cover != now.file && QFileInfo::exists(cover))
        now.cover = cover;
    now.lengthMs = s.TrackLength;
    if (now.state != NowPlaying::State::Stopped) {
        // The device knows the position to the moment; the tick's copy runs a
        // tick ahead and pictures have no device at all.
        now.positionMs = device && s.CurDevice != QLatin1String("Delay")
                             ? device->position() - s.TrackStart
                             : s.PlayPos;
        now.positionMs = qBound<qint64>(0, now.positionMs, qMax<qint64>(now.lengthMs, 0));
    }
    return now;
}

namespace {

// "Playing", "Paused" or "Stopped".
QString stateName(NowPlaying::State state)
{
    switch (state) {
    case NowPlaying::State::Playing:
        return QStringLiteral("Playing");
    case NowPlaying::State::Paused:
        return QStringLiteral("Paused");
    case NowPlaying::State::Stopped:
        break;
    }
    return QStringLiteral("Stopped");
}

// "m:ss", or "h:mm:ss" from an hour on.
QString clockTime(qint64 ms)
{
    const qint64 seconds = qMax<qint64>(ms, 0) / 1000;
    const QLatin1Char zero('0');
    if (seconds >= 3600)
        return QStringLiteral("%1:%2:%3")
            .arg(seconds / 3600)
            .arg(seconds / 60 % 60, 2, 10, zero)
            .arg(seconds % 60, 2, 10, zero);
    return QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, zero);
}

} // namespace

QString statusText(const NowPlaying &now)
{
    const QString who =
        now.artist.isEmpty() ? now.title : now.artist + QStringLiteral(" - ") + now.title;
    return stateName(now.state) + QLatin1Char('\n') + who + QLatin1Char('\n') +
           clockTime(now.positionMs) + QStringLiteral(" / ") + clockTime(now.lengthMs) +
           QLatin1Char('\n');
}
