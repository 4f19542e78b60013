#include "atspi.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace {

constexpr int kCallTimeoutMs = 5000;
const QString kRoot = QStringLiteral("/org/a11y/atspi/accessible/root");

QDBusMessage call(const QString &connection, const QString &service, const QString &path,
                  const QString &interface, const QString &method,
                  const QVariantList &arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection(connection).call(message, QDBus::Block, kCallTimeoutMs);
}

} // namespace

SessionBus::SessionBus()
{
    m_daemon.start(QStringLiteral("dbus-daemon"),
                   {QStringLiteral("--session"), QStringLiteral("--nofork"),
                    QStringLiteral("--print-address=1")});
    if (!m_daemon.waitForStarted(5000))
        return;
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead(10000)) {
    }
    m_address = QString::fromLocal8Bit(m_daemon.readLine()).trimmed();
}

SessionBus::~SessionBus()
{
    // The accessibility bus it started ends with it.
    if (m_daemon.state() != QProcess::NotRunning) {
        m_daemon.terminate();
        if (!m_daemon.waitForFinished(3000)) {
            m_daemon.kill();
            m_daemon.waitForFinished(3000);
        }
    }
}

AtSpi::AtSpi(const SessionBus &session)
    : m_session(QStringLiteral("e2e-session")), m_bus(QStringLiteral("e2e-a11y"))
{
    if (!session.isRunning())
        return;
    QDBusConnection::connectToBus(session.address(), m_session);
    const QDBusMessage reply =
        call(m_session, QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
             QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const QString address = reply.arguments().value(0).toString();
    if (!address.isEmpty())
        QDBusConnection::connectToBus(address, m_bus);
}

AtSpi::~AtSpi()
{
    QDBusConnection::disconnectFromBus(m_bus);
    QDBusConnection::disconnectFromBus(m_session);
}

bool AtSpi::isConnected() const
{
    return QDBusConnection(m_bus).isConnected();
}

std::optional<Accessible> AtSpi::application(qint64 pid) const
{
    const QDBusMessage names =
        call(m_bus, QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
             QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames"));
    for (const QString &name : names.arguments().value(0).toStringList()) {
        if (!name.startsWith(QLatin1Char(':')))
            continue;
        const QDBusMessage owner =
            call(m_bus, QStringLiteral("org.freedesktop.DBus"),
                 QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
                 QStringLiteral("GetConnectionUnixProcessID"), {name});
        if (owner.type() == QDBusMessage::ReplyMessage &&
            owner.arguments().value(0).toLongLong() == pid)
            return Accessible{name, kRoot};
    }
    return std::nullopt;
}

QList<Accessible> AtSpi::children(const Accessible &object) const
{
    const QDBusMessage reply =
        call(m_bus, object.service, object.path, QStringLiteral("org.a11y.atspi.Accessible"),
             QStringLiteral("GetChildren"));
    QList<Accessible> found;
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return found;
    const QDBusArgument list = reply.arguments().first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        found << Accessible{service, path.path()};
    }
    list.endArray();
    return found;
}

QRect AtSpi::extents(const Accessible &object) const
{
    const QDBusMessage reply =
        call(m_bus, object.service, object.path, QStringLiteral("org.a11y.atspi.Component"),
             QStringLiteral("GetExtents"), {QVariant::fromValue(uint(0))}); // screen coordinates
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    const QDBusArgument box = reply.arguments().first().value<QDBusArgument>();
    int x = 0, y = 0, width = 0, height = 0;
    box.beginStructure();
    box >> x >> y >> width >> height;
    box.endStructure();
    return QRect(x, y, width, height);
}

std::optional<Accessible> AtSpi::findAt(const Accessible &root, const QRect &onScreen,
                                        int depth) const
{
    if (extents(root) == onScreen)
        return root;
    if (depth <= 0)
        return std::nullopt;
    for (const Accessible &child : children(root))
        if (const auto found = findAt(child, onScreen, depth - 1))
            return found;
    return std::nullopt;
}

QString AtSpi::name(const Accessible &object) const
{
    const QDBusMessage reply =
        call(m_bus, object.service, object.path, QStringLiteral("org.freedesktop.DBus.Properties"),
             QStringLiteral("Get"),
             {QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("Name")});
    return reply.arguments().value(0).value<QDBusVariant>().variant().toString();
}
