#include "mprisbridge.h"

#include "nowplaying.h"
#include "velto.h"
#include "windowflags.h"

#include "core/commands.h"

#include <QUrl>

#include <cmath>

namespace {

// What the menu entry (dist/org.velto.Velto.desktop) opens, read from it at build time.
QStringList mimeTypes()
{
    return QString::fromLatin1(VELTO_MIME_TYPES).split(u',', Qt::SkipEmptyParts);
}

} // namespace

MprisBridge::MprisBridge(Velto &velto)
    : m_velto(velto), m_service(*this, {QStringLiteral("Velto"),
                                        QStringLiteral("org.velto.Velto"),
                                        {QStringLiteral("file")},
                                        mimeTypes()})
{
    PlayerPart &player = velto.player();
    // The beat catches what changes without a signal: the volume, the list's length.
    connect(&player, &PlayerPart::stateChanged, &m_service, &MprisService::refresh);
    connect(&player, &PlayerPart::titlesChanged, &m_service, &MprisService::refresh);
    connect(&velto.clockTick(), &ClockTick::beat, &m_service, &MprisService::refresh);
    connect(&player.engine(), &PlaybackEngine::seeked, &m_service,
            [this](qint64 ms) { m_service.seeked(ms * 1000); });
}

bool MprisBridge::start()
{
    const bool started = m_service.start(QStringLiteral("velto"));
    if (!started && MprisService::sessionBusConfigured())
        qWarning("velto: no media controls on the desktop: %s", qPrintable(m_service.problem()));
    return started;
}

MprisPlayer::State MprisBridge::state()
{
    const NowPlaying now = nowPlaying(m_velto.player(), m_velto.playlist());
    State s;
    s.status = now.state == NowPlaying::State::Playing  ? Status::Playing
               : now.state == NowPlaying::State::Paused ? Status::Paused
                                                        : Status::Stopped;
    if (now.entry > 0) {
        s.track.id = QString::number(now.entry);
        s.track.lengthUs = now.lengthMs * 1000;
        s.track.title = now.title;
        if (!now.artist.isEmpty())
            s.track.artists = QStringList{now.artist};
        s.track.album = now.album;
        if (!now.cover.isEmpty())
            s.track.artUrl = QUrl::fromLocalFile(now.cover).toString();
        if (!now.file.isEmpty() && !now.file.contains(QLatin1String("://")))
            s.track.url = QUrl::fromLocalFile(now.file).toString();
    }
    PlayerPart &player = m_velto.player();
    // Four decimals: a level set as 0.3 reads back as 0.3, not as its float.
    s.volume = player.muted() ? 0.0 : std::round(player.volume().volumeLevel() * 1e4) / 1e4;
    s.shuffle = now.shuffle;
    s.loopTrack = now.repeat;
    // Past the last entry the list stops at its start, so there is no next;
    // before the first it goes round to the last.
    s.canGoNext = now.count > 0 && (now.entry < now.count || now.shuffle);
    s.canGoPrevious = now.count > 0;
    s.canPlay = now.count > 0;
    s.canPause = now.count > 0;
    s.canSeek = now.state != NowPlaying::State::Stopped && now.lengthMs > 0;
    return s;
}

qint64 MprisBridge::positionUs()
{
    return nowPlaying(m_velto.player(), m_velto.playlist()).positionMs * 1000;
}

void MprisBridge::play()
{
    const PlaybackState &s = m_velto.player().state();
    if (s.playing && s.paused)
        m_velto.DoIt(Command::Pause);
    else if (!s.playing)
        m_velto.DoIt(Command::Play);
}

void MprisBridge::pause()
{
    const PlaybackState &s = m_velto.player().state();
    if (s.playing && !s.paused)
        m_velto.DoIt(Command::Pause);
}

void MprisBridge::playPause()
{
    m_velto.DoIt(Command::PlayPause);
}

void MprisBridge::stop()
{
    m_velto.DoIt(Command::Stop);
}

void MprisBridge::next()
{
    m_velto.DoIt(Command::Next);
}

void MprisBridge::previous()
{
    m_velto.DoIt(Command::Previous);
}

void MprisBridge::setPositionUs(qint64 position)
{
    m_velto.player().engine().PlayFrom(qint32(qMin<qint64>(position / 1000, INT32_MAX)));
}

void MprisBridge::setVolume(double volume)
{
    PlayerPart &player = m_velto.player();
    player.fade().cancel(); // the user took over
    player.volume().setVolumeLevel(float(volume));
}

void MprisBridge::setShuffle(bool on)
{
    if (m_velto.player().flags().Shuffle != on)
        m_velto.DoIt(Command::Shuffle);
}

void MprisBridge::setLoopTrack(bool on)
{
    if (m_velto.player().flags().RepeatItem != on)
        m_velto.DoIt(Command::RepeatItem);
}

void MprisBridge::openUri(const QString &uri)
{
    const QUrl url(uri);
    const QString path = url.isLocalFile() ? url.toLocalFile() : uri;
    if (!m_velto.openRadio(path))
        m_velto.openFiles({path}, true);
}

void MprisBridge::raise()
{
    bringForward(m_velto.window());
}

void MprisBridge::quit()
{
    m_velto.DoIt(Command::ShutDown);
}
