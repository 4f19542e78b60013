#pragma once

#include "skin/skinpart.h"

#include <QByteArray>
#include <QString>

class SerialPort;

// What one text becomes on the wire: the sign's address, page and
// colour/mode codes, two blanks, the text, three blanks and CR LF. Both
// kinds of display get the same frame. Characters without a Windows-1252
// form go out as "?": the signs know no other set.
QByteArray ledFrame(const QString &text);

// The external display: an LED sign (or LCD module) on a serial port that
// shows what Velto says (the greeting, the title playing, "paused...",
// "Velto stopped"). Nothing is sent while it is off. A port that cannot be
// opened leaves it silent, without a message, and the next text tries again.
class LedSign : public SkinPart
{
public:
    // The settings it reads; they outlive the part.
    struct Options
    {
        const qint16 &ExEnable;
        const qint16 &ExPort;
        const QString &ExParm; // "9600,N,8,1", optionally with the device in front
    };

    LedSign(Options options, SerialPort &port) : m_options(options), m_port(port) {}

    // SkinPart: the greeting at start-up, and the last word at shut-down.
    void started() override;
    void ending(bool interactive) override;
    // New port settings take effect with the next text.
    void settingsChanged() override { SerialClose(); }

    // Opens the port from the settings; failures are only logged.
    void SerialOpen();
    void SerialClose();
    void ExDevOut(const QString &text);

    // The device the settings name, empty for none.
    QString device() const;

private:
    Options m_options;
    SerialPort &m_port;
    QString m_warned; // the last failure logged, so a dead port does not flood the log
};
