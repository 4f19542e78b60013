#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <memory>

// An FM radio receiver: the operations the FM mode asks of a tuner card. The
// names are those of the card library the mode was written for. A tuner that
// could not be opened answers every call quietly (no signal, no stereo,
// volume 0) and says why through problem().
class Tuner
{
public:
    virtual ~Tuner() = default;

    // Empty while the tuner works; otherwise why it does not, for the user.
    virtual QString problem() const = 0;

    virtual void set_frequency(qint32 hz) = 0;
    // The receiver's sound on and off; the frequency stays.
    virtual void radio_on() = 0;
    virtual void radio_off() = 0;
    // 1 when the tuned frequency carries a station, respectively a stereo one.
    virtual int signal_detect() = 0;
    virtual int stereo_detect() = 0;
    // The card's volume, 0 to 65535.
    virtual int get_volume() = 0;
    virtual void set_volume(int volume) = 0;
    virtual void volumeup() = 0;
    virtual void volumedown() = 0;
    // Port and card type of the ISA cards the mode once drove. A Video4Linux
    // device knows its own; they are kept only to be shown.
    virtual void set_port(int port) { Q_UNUSED(port); }
    virtual void set_card_type(int type) { Q_UNUSED(type); }
};

// The Video4Linux radio device at path (/dev/radio0). Opening never blocks and
// never fails: a missing or unsuitable device gives a tuner whose problem()
// says what is wrong.
std::unique_ptr<Tuner> openRadioDevice(const QString &path);

// The radio devices present (/dev/radio0, /dev/radio1...), for the preferences.
QStringList radioDevices();
