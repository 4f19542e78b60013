#pragma once

#include <QByteArray>
#include <QString>
#include <QtCore/qtestsupport_core.h>

#include <cerrno>
#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

// A pseudo-terminal: Velto opens the device end by its path as it would a
// serial port, and the test reads on the other end what a sign attached to
// it would receive.
class PseudoTerminal
{
public:
    PseudoTerminal()
    {
        int device = -1;
        char name[256] = {};
        if (openpty(&m_master, &device, name, nullptr, nullptr) != 0)
            return;
        m_path = QString::fromLocal8Bit(name);
        // Raw, so the bytes arrive as written: no CR/LF translation, no echo.
        termios raw{};
        tcgetattr(device, &raw);
        cfmakeraw(&raw);
        tcsetattr(device, TCSANOW, &raw);
        // Kept open so the other end never sees a hang-up between two opens.
        m_device = device;
        fcntl(m_master, F_SETFL, fcntl(m_master, F_GETFL) | O_NONBLOCK);
    }
    ~PseudoTerminal()
    {
        if (m_device >= 0)
            ::close(m_device);
        if (m_master >= 0)
            ::close(m_master);
    }
    PseudoTerminal(const PseudoTerminal &) = delete;
    PseudoTerminal &operator=(const PseudoTerminal &) = delete;

    bool isOpen() const { return m_master >= 0 && !m_path.isEmpty(); }
    // The device end, as a serial port's path.
    const QString &path() const { return m_path; }

    // Everything received so far, the event loop turned until at least
    // `bytes` have come or the time is up (the margin is for a busy machine).
    QByteArray read(qsizetype bytes, int timeoutMs = 10000)
    {
        (void)QTest::qWaitFor([&] { return drain(), m_received.size() >= bytes; }, timeoutMs);
        return std::exchange(m_received, {});
    }
    // The settings the device end has now, as the program set them.
    termios settings() const
    {
        termios t{};
        tcgetattr(m_device, &t);
        return t;
    }

private:
    void drain()
    {
        char buffer[4096];
        for (;;) {
            const ssize_t n = ::read(m_master, buffer, sizeof buffer);
            if (n <= 0)
                break;
            m_received.append(buffer, n);
        }
    }

    int m_master = -1;
    int m_device = -1;
    QString m_path;
    QByteArray m_received;
};
