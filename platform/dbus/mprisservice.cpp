#include "mprisservice.h"

#include "mprisadaptors.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QFileInfo>

#include <unistd.h>

namespace {

const QString kPlayerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");

} // namespace

MprisService::MprisService(MprisPlayer &player, Identity identity, QObject *parent)
    : QObject(parent), m_player(player), m_identity(std::move(identity)),
      m_bus(QStringLiteral("none"))
{
    new RootAdaptor(*this);
    m_playerAdaptor = new PlayerAdaptor(*this);
}

MprisService::~MprisService()
{
    if (!m_registered)
        return;
    m_bus.unregisterObject(QLatin1String(kObjectPath));
    m_bus.unregisterService(m_serviceName);
}

bool MprisService::sessionBusConfigured()
{
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

bool MprisService::start(const QString &name)
{
    if (m_registered)
        return true;
    if (!sessionBusConfigured()) {
        m_problem = QStringLiteral("no session bus");
        return false;
    }
    m_bus = QDBusConnection::sessionBus();
    if (!m_bus.isConnected()) {
        m_problem = m_bus.lastError().message();
        return false;
    }
    if (!m_bus.registerObject(QLatin1String(kObjectPath), this, QDBusConnection::ExportAdaptors)) {
        m_problem = QStringLiteral("%1 is taken on the session bus").arg(kObjectPath);
        return false;
    }
    const QString base = QStringLiteral("org.mpris.MediaPlayer2.") + name;
    // A second player of the same name may still be there (one on another
    // display): MPRIS's ".instance<pid>" suffix keeps both reachable.
    for (const QString &candidate : {base, base + QStringLiteral(".instance%1").arg(::getpid())}) {
        if (m_bus.registerService(candidate)) {
            m_serviceName = candidate;
            break;
        }
    }
    if (m_serviceName.isEmpty()) {
        m_bus.unregisterObject(QLatin1String(kObjectPath));
        m_problem = QStringLiteral("%1 is taken on the session bus").arg(base);
        return false;
    }
    m_registered = true;
    m_announced = m_player.state();
    return true;
}

QString MprisService::trackPath(const MprisPlayer::Track &track)
{
    return track.id.isEmpty() ? QLatin1String(kNoTrack)
                              : QStringLiteral("/org/velto/track/") + track.id;
}

QVariantMap MprisService::metadata(const MprisPlayer::Track &track)
{
    QVariantMap m;
    m.insert(QStringLiteral("mpris:trackid"),
             QVariant::fromValue(QDBusObjectPath(trackPath(track))));
    if (track.id.isEmpty())
        return m;
    if (track.lengthUs > 0)
        m.insert(QStringLiteral("mpris:length"), qlonglong(track.lengthUs));
    m.insert(QStringLiteral("xesam:title"), track.title);
    if (!track.artists.isEmpty())
        m.insert(QStringLiteral("xesam:artist"), track.artists);
    if (!track.album.isEmpty())
        m.insert(QStringLiteral("xesam:album"), track.album);
    if (!track.artUrl.isEmpty())
        m.insert(QStringLiteral("mpris:artUrl"), track.artUrl);
    if (!track.url.isEmpty())
        m.insert(QStringLiteral("xesam:url"), track.url);
    return m;
}

QString MprisService::statusName(MprisPlayer::Status status)
{
    switch (status) {
    case MprisPlayer::Status::Playing:
        return QStringLiteral("Playing");
    case MprisPlayer::Status::Paused:
        return QStringLiteral("Paused");
    case MprisPlayer::Status::Stopped:
        break;
    }
    return QStringLiteral("Stopped");
}

void MprisService::refresh()
{
    if (!m_registered)
        return;
    const MprisPlayer::State now = m_player.state();
    if (now == m_announced)
        return;
    const MprisPlayer::State &was = m_announced;
    QVariantMap changed;
    auto note = [&changed](const char *name, bool differs, const QVariant &value) {
        if (differs)
            changed.insert(QLatin1String(name), value);
    };
    note("PlaybackStatus", now.status != was.status, statusName(now.status));
    note("Metadata", now.track != was.track, metadata(now.track));
    note("Volume", now.volume != was.volume, now.volume);
    note("Shuffle", now.shuffle != was.shuffle, now.shuffle);
    note("LoopStatus", now.loopTrack != was.loopTrack,
         now.loopTrack ? QStringLiteral("Track") : QStringLiteral("None"));
    note("CanGoNext", now.canGoNext != was.canGoNext, now.canGoNext);
    note("CanGoPrevious", now.canGoPrevious != was.canGoPrevious, now.canGoPrevious);
    note("CanPlay", now.canPlay != was.canPlay, now.canPlay);
    note("CanPause", now.canPause != was.canPause, now.canPause);
    note("CanSeek", now.canSeek != was.canSeek, now.canSeek);
    m_announced = now;
    QDBusMessage signal = QDBusMessage::createSignal(
        QLatin1String(kObjectPath), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"));
    signal << kPlayerInterface << changed << QStringList();
    m_bus.send(signal);
}

void MprisService::seeked(qint64 positionUs)
{
    if (m_registered)
        emit m_playerAdaptor->Seeked(positionUs);
}
