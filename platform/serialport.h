#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

// How a serial line is driven, as the settings text "9600,N,8,1" writes it.
struct SerialLine
{
    enum class StopBits { One, OneAndHalf, Two };

    qint32 speed = 9600;
    char parity = 'N'; // N(one), E(ven), O(dd), M(ark) or S(pace)
    int dataBits = 8;  // 5 to 8
    StopBits stopBits = StopBits::One;

    bool operator==(const SerialLine &) const = default;
};

// A settings text read: the line, the device when the text names one, and
// what is wrong with it (empty when nothing is).
struct SerialSettings
{
    QString device;
    SerialLine line;
    QString error;
};

// "speed,parity,data bits,stop bits", blanks allowed around each field. Fields
// left out at the end take the values of "9600,N,8,1", so an empty text is
// that line. A first field beginning with "/" is the device itself:
// "/dev/ttyUSB0,9600,N,8,1".
SerialSettings parseSerialSettings(const QString &text);

// The device of serial port number n: 1-99 are the built-in ports
// /dev/ttyS0-98 (port 1 is the first, as on the machines the signs come
// from), 100-199 USB adapters /dev/ttyUSB0-99 and 200-299 USB modems
// /dev/ttyACM0-99. Other numbers, 0 included, name no port: empty.
QString serialDevicePath(int port);

// A serial port that is only written to. Opening a port that is not there
// fails quietly: the caller decides whether anyone is told.
class SerialPort
{
public:
    virtual ~SerialPort() = default;

    // Opens device with the line's settings, no flow control; false (and
    // closed) when the device cannot be had or refuses the settings.
    virtual bool open(const QString &device, const SerialLine &line) = 0;
    virtual bool isOpen() const = 0;
    virtual void close() = 0;
    // Queues the bytes; they leave while the event loop runs. False when the
    // port is closed or took none; a port that failed closes itself.
    virtual bool write(const QByteArray &bytes) = 0;
    // Waits at most timeoutMs for what is queued to leave (for shut-down).
    virtual void flush(int timeoutMs) = 0;
    // Why the last open or write failed, for the developer's log.
    virtual QString errorText() const = 0;
};

class QSerialPort;

class QtSerialPort : public SerialPort
{
public:
    QtSerialPort();
    ~QtSerialPort() override;

    bool open(const QString &device, const SerialLine &line) override;
    bool isOpen() const override;
    void close() override;
    bool write(const QByteArray &bytes) override;
    void flush(int timeoutMs) override;
    QString errorText() const override;

private:
    std::unique_ptr<QSerialPort> m_port;
    QString m_error;
};
