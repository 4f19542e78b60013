#pragma once

#include "platform/dbus/mprisplayer.h"
#include "platform/dbus/mprisservice.h"

#include <QObject>

class Velto;

// Velto's player as the desktop's media controls see it (MPRIS2): what plays,
// and the buttons they press, which act as the skin's own buttons would.
class MprisBridge : public QObject, public MprisPlayer
{
    Q_OBJECT
public:
    explicit MprisBridge(Velto &velto);

    // Goes on the session bus as org.mpris.MediaPlayer2.velto; false, with a
    // reason in service().problem(), when there is no bus.
    bool start();
    MprisService &service() { return m_service; }

    // MprisPlayer
    State state() override;
    qint64 positionUs() override;
    void play() override;
    void pause() override;
    void playPause() override;
    void stop() override;
    void next() override;
    void previous() override;
    void setPositionUs(qint64 position) override;
    void setVolume(double volume) override;
    void setShuffle(bool on) override;
    void setLoopTrack(bool on) override;
    void openUri(const QString &uri) override;
    void raise() override;
    void quit() override;

private:
    Velto &m_velto;
    MprisService m_service;
};
