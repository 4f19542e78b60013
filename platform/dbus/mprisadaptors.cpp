#include "mprisadaptors.h"

#include "mprisservice.h"

#include <QUrl>

#include <algorithm>
#include <cmath>

RootAdaptor::RootAdaptor(MprisService &service) : QDBusAbstractAdaptor(&service), m_service(service)
{
}

QString RootAdaptor::identity() const
{
    return m_service.identity().name;
}

QString RootAdaptor::desktopEntry() const
{
    return m_service.identity().desktopEntry;
}

QStringList RootAdaptor::supportedUriSchemes() const
{
    return m_service.identity().uriSchemes;
}

QStringList RootAdaptor::supportedMimeTypes() const
{
    return m_service.identity().mimeTypes;
}

void RootAdaptor::Raise()
{
    m_service.player().raise();
}

void RootAdaptor::Quit()
{
    m_service.player().quit();
}

PlayerAdaptor::PlayerAdaptor(MprisService &service)
    : QDBusAbstractAdaptor(&service), m_service(service)
{
}

QString PlayerAdaptor::playbackStatus() const
{
    return MprisService::statusName(m_service.player().state().status);
}

QString PlayerAdaptor::loopStatus() const
{
    return m_service.player().state().loopTrack ? QStringLiteral("Track") : QStringLiteral("None");
}

void PlayerAdaptor::setLoopStatus(const QString &status)
{
    // Velto repeats one item or none; a whole list ("Playlist") it cannot.
    if (status == QLatin1String("Track") || status == QLatin1String("None"))
        m_service.player().setLoopTrack(status == QLatin1String("Track"));
    m_service.refresh();
}

bool PlayerAdaptor::shuffle() const
{
    return m_service.player().state().shuffle;
}

void PlayerAdaptor::setShuffle(bool on)
{
    m_service.player().setShuffle(on);
    m_service.refresh();
}

QVariantMap PlayerAdaptor::metadata() const
{
    return MprisService::metadata(m_service.player().state().track);
}

double PlayerAdaptor::volume() const
{
    return m_service.player().state().volume;
}

void PlayerAdaptor::setVolume(double volume)
{
    if (std::isnan(volume))
        return;
    m_service.player().setVolume(std::clamp(volume, 0.0, 1.0));
    m_service.refresh();
}

qlonglong PlayerAdaptor::position() const
{
    return m_service.player().positionUs();
}

bool PlayerAdaptor::canGoNext() const
{
    return m_service.player().state().canGoNext;
}

bool PlayerAdaptor::canGoPrevious() const
{
    return m_service.player().state().canGoPrevious;
}

bool PlayerAdaptor::canPlay() const
{
    return m_service.player().state().canPlay;
}

bool PlayerAdaptor::canPause() const
{
    return m_service.player().state().canPause;
}

bool PlayerAdaptor::canSeek() const
{
    return m_service.player().state().canSeek;
}

// Each call announces what it changed at once, so a client that asks right
// after its call reads the new state.
void PlayerAdaptor::Next()
{
    if (m_service.player().state().canGoNext)
        m_service.player().next();
    m_service.refresh();
}

void PlayerAdaptor::Previous()
{
    if (m_service.player().state().canGoPrevious)
        m_service.player().previous();
    m_service.refresh();
}

void PlayerAdaptor::Pause()
{
    m_service.player().pause();
    m_service.refresh();
}

void PlayerAdaptor::PlayPause()
{
    m_service.player().playPause();
    m_service.refresh();
}

void PlayerAdaptor::Stop()
{
    m_service.player().stop();
    m_service.refresh();
}

void PlayerAdaptor::Play()
{
    m_service.player().play();
    m_service.refresh();
}

void PlayerAdaptor::Seek(qlonglong offset)
{
    MprisPlayer &player = m_service.player();
    const MprisPlayer::State state = player.state();
    if (!state.canSeek || offset == 0)
        return;
    const qint64 here = player.positionUs();
    // Past the end is the next track; before the start is the start. Compared
    // as distances, so no offset a client sends can overflow.
    if (offset > state.track.lengthUs - here) {
        if (state.canGoNext)
            player.next();
    } else {
        player.setPositionUs(std::max<qint64>(here + offset, 0));
    }
    m_service.refresh();
}

void PlayerAdaptor::SetPosition(const QDBusObjectPath &trackId, qlonglong position)
{
    MprisPlayer &player = m_service.player();
    const MprisPlayer::State state = player.state();
    // A position for a track that has gone meanwhile, or outside this one: ignored.
    if (!state.canSeek || trackId.path() != MprisService::trackPath(state.track) || position < 0 ||
        position > state.track.lengthUs)
        return;
    player.setPositionUs(position);
}

void PlayerAdaptor::OpenUri(const QString &uri)
{
    const QUrl url(uri);
    if (url.isLocalFile())
        m_service.player().openUri(uri);
}
