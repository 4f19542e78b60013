#pragma once

#include "mprisplayer.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// A player on the session bus as org.mpris.MediaPlayer2.<name>, at
// /org/mpris/MediaPlayer2 with both MPRIS interfaces. The desktop's media
// keys and widgets, phone bridges and playerctl see and drive the player
// through it. The owner calls refresh() whenever something may have
// changed; the service works out what did and announces only that.
class MprisService : public QObject
{
    Q_OBJECT
public:
    struct Identity
    {
        QString name;         // shown to the user: "Velto"
        QString desktopEntry; // the .desktop file's name without ".desktop"
        QStringList uriSchemes;
        QStringList mimeTypes;
    };

    static constexpr const char *kObjectPath = "/org/mpris/MediaPlayer2";
    static constexpr const char *kNoTrack = "/org/mpris/MediaPlayer2/TrackList/NoTrack";

    MprisService(MprisPlayer &player, Identity identity, QObject *parent = nullptr);
    ~MprisService() override;

    // True when a session bus is there to connect to. Without one, libdbus
    // would start a bus of its own for every program on the display.
    static bool sessionBusConfigured();
    // Takes org.mpris.MediaPlayer2.<name>, or <name>.instance<pid> when the
    // name is taken. False, with problem() saying why, without a bus.
    bool start(const QString &name);
    QString serviceName() const { return m_serviceName; }
    QString problem() const { return m_problem; }

    // Sends PropertiesChanged for what differs from the last announcement.
    void refresh();
    // The position jumped (a seek, a new track started part way).
    void seeked(qint64 positionUs);

    MprisPlayer &player() { return m_player; }
    const Identity &identity() const { return m_identity; }
    // The track's object path on the bus.
    static QString trackPath(const MprisPlayer::Track &track);
    static QVariantMap metadata(const MprisPlayer::Track &track);
    static QString statusName(MprisPlayer::Status status);

private:
    MprisPlayer &m_player;
    Identity m_identity;
    QDBusConnection m_bus;
    QString m_serviceName;
    QString m_problem;
    MprisPlayer::State m_announced;
    bool m_registered = false;
    class PlayerAdaptor *m_playerAdaptor = nullptr;
};
