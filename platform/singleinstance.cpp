#include "platform/singleinstance.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTimer>

#include <chrono>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// Makes the folder for the socket, private to the user; empty when it is
// fine, else why not.
QString preparePrivateFolder(const QString &folder)
{
    const QByteArray name = QFile::encodeName(folder);
    if (::mkdir(name.constData(), 0700) != 0 && errno != EEXIST)
        return QStringLiteral("cannot make %1").arg(folder);
    struct stat st
    {
    };
    if (::lstat(name.constData(), &st) != 0 || !S_ISDIR(st.st_mode))
        return QStringLiteral("%1 is not a folder").arg(folder);
    if (st.st_uid != ::geteuid())
        return QStringLiteral("%1 belongs to another user").arg(folder);
    return {};
}

} // namespace

SingleInstance::SingleInstance(QString socketPath) : m_path(std::move(socketPath)) {}

SingleInstance::~SingleInstance()
{
    // Closing the server removes the socket, so the next start owns it at once.
    if (m_server)
        m_server->close();
    unlock();
}

QString SingleInstance::defaultPath()
{
    QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (folder.isEmpty() || !QFileInfo(folder).isDir())
        folder = QDir::tempPath() + QStringLiteral("/velto-%1").arg(::geteuid());
    else
        folder += QStringLiteral("/velto");
    return folder + QStringLiteral("/instance");
}

SingleInstance::Role SingleInstance::alone(const QString &problem)
{
    m_problem = problem;
    m_role = Role::Alone;
    unlock();
    return m_role;
}

void SingleInstance::unlock()
{
    if (m_lock >= 0)
        ::close(m_lock); // releases the flock
    m_lock = -1;
}

SingleInstance::Role SingleInstance::claim(int lockTimeoutMs)
{
    const QByteArray socketName = QFile::encodeName(m_path);
    if (socketName.size() >= qsizetype(sizeof(sockaddr_un::sun_path)))
        return alone(QStringLiteral("the socket path %1 is too long").arg(m_path));
    if (const QString problem = preparePrivateFolder(QFileInfo(m_path).absolutePath());
        !problem.isEmpty())
        return alone(problem);

    m_lock =
        ::open((socketName + ".lock").constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (m_lock < 0)
        return alone(QStringLiteral("cannot open the lock beside %1").arg(m_path));
    // The lock is held for a few milliseconds by a start between its check
    // and its listen; flock is released by the kernel when a holder dies.
    QElapsedTimer waited;
    waited.start();
    while (::flock(m_lock, LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK || waited.elapsed() > lockTimeoutMs)
            return alone(QStringLiteral("another start holds the lock beside %1").arg(m_path));
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }

    struct stat st
    {
    };
    if (::lstat(socketName.constData(), &st) != 0) {
        m_role = Role::Owner;
        return m_role;
    }
    // Neither trust nor remove what someone else put there.
    if (st.st_uid != ::geteuid())
        return alone(QStringLiteral("%1 belongs to another user").arg(m_path));
    if (!S_ISSOCK(st.st_mode))
        return alone(QStringLiteral("%1 is not a socket").arg(m_path));

    auto *client = new QLocalSocket(this);
    client->connectToServer(m_path);
    if (client->waitForConnected(1000)) {
        m_client = client;
        m_role = Role::Other;
        unlock();
        return m_role;
    }
    // A socket nobody listens on: its owner was killed. listen() replaces it.
    delete client;
    m_role = Role::Owner;
    return m_role;
}

std::optional<QByteArray> SingleInstance::ask(const QByteArray &request, int timeoutMs)
{
    if (m_role != Role::Other || !m_client)
        return std::nullopt;
    QElapsedTimer clock;
    clock.start();
    auto left = [&] { return int(qMax<qint64>(timeoutMs - clock.elapsed(), 0)); };
    m_client->write(request);
    m_client->write("\n");
    while (m_client->bytesToWrite() > 0 && m_client->state() == QLocalSocket::ConnectedState) {
        if (!m_client->waitForBytesWritten(left()))
            return std::nullopt;
    }
    QByteArray answer;
    while (m_client->state() == QLocalSocket::ConnectedState) {
        if (!m_client->waitForReadyRead(left())) {
            if (m_client->state() == QLocalSocket::ConnectedState)
                return std::nullopt; // no answer in time
            break;
        }
        answer += m_client->readAll();
    }
    answer += m_client->readAll();
    return answer;
}

bool SingleInstance::listen(Handler handler)
{
    if (m_role != Role::Owner)
        return false;
    m_handler = std::move(handler);
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    // Under the lock: whatever is there is a dead owner's socket.
    QLocalServer::removeServer(m_path);
    if (!m_server->listen(m_path)) {
        const QString why = m_server->errorString();
        delete m_server;
        alone(QStringLiteral("cannot listen on %1: %2").arg(m_path, why));
        return false;
    }
    connect(m_server, &QLocalServer::newConnection, this, &SingleInstance::accept);
    unlock();
    return true;
}

void SingleInstance::accept()
{
    while (QLocalSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { readFrom(socket); });
        // A client that never finishes its line does not hold a connection open.
        QTimer::singleShot(kRequestMs, socket, [socket] {
            if (socket->property("answered").toBool())
                return;
            socket->abort();
            socket->deleteLater();
        });
        readFrom(socket);
    }
}

void SingleInstance::readFrom(QLocalSocket *socket)
{
    if (socket->property("answered").toBool())
        return;
    if (!socket->canReadLine()) {
        if (socket->bytesAvailable() > kMaxRequest) {
            socket->abort();
            socket->deleteLater();
        }
        return;
    }
    QByteArray request = socket->readLine(kMaxRequest + 1);
    if (request.endsWith('\n'))
        request.chop(1);
    socket->setProperty("answered", true);
    const QByteArray answer = m_handler ? m_handler(request) : QByteArray();
    socket->write(answer);
    // Written out first, then closed: the asker reads up to the close.
    socket->disconnectFromServer();
}
