#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QRect>
#include <QString>

#include <optional>

// A private D-Bus session for one test: the accessibility bus is started on
// it when first asked for, so a program given its address is read as a
// screen reader would read it.
class SessionBus
{
public:
    SessionBus();
    ~SessionBus();
    bool isRunning() const { return !m_address.isEmpty(); }
    // For DBUS_SESSION_BUS_ADDRESS.
    const QString &address() const { return m_address; }

private:
    QProcess m_daemon;
    QString m_address;
};

// One object on the accessibility bus (AT-SPI 2).
struct Accessible
{
    QString service;
    QString path;
};

// A client of the accessibility bus of a session.
class AtSpi
{
public:
    explicit AtSpi(const SessionBus &session);
    ~AtSpi();
    bool isConnected() const;

    // The application root of the process, once it has joined the bus.
    std::optional<Accessible> application(qint64 pid) const;
    // The first object below root, depth first, that covers exactly this
    // rectangle of the screen.
    std::optional<Accessible> findAt(const Accessible &root, const QRect &onScreen,
                                     int depth = 4) const;
    QString name(const Accessible &object) const;

private:
    QList<Accessible> children(const Accessible &object) const;
    QRect extents(const Accessible &object) const;

    QString m_session;
    QString m_bus;
};
