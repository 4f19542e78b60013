#include "platform/singleinstance.h"

#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <future>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// A socket file as a killed owner leaves it: bound, nobody listening.
bool leaveDeadSocket(const QString &path)
{
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    const bool bound = ::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    ::close(fd);
    return bound;
}

class SingleInstanceTest : public ::testing::Test
{
protected:
    QString path() const { return dir.filePath(QStringLiteral("velto/instance")); }

    // Another start asks from its own thread while the event loop turns here,
    // as the owner's would.
    std::optional<QByteArray> askOnce(const QByteArray &request)
    {
        auto start = std::async(std::launch::async, [this, request]() -> std::optional<QByteArray> {
            SingleInstance other(path());
            if (other.claim() != SingleInstance::Role::Other)
                return std::nullopt;
            return other.ask(request, 5000);
        });
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return start.wait_for(std::chrono::seconds(0)) == std::future_status::ready; },
            10000));
        return start.get();
    }

    QTemporaryDir dir;
    QList<QByteArray> requests;
    SingleInstance::Handler echo = [this](const QByteArray &request) {
        requests << request;
        return "got " + request;
    };
};

TEST_F(SingleInstanceTest, StartThatCannotGetTheLockRunsAlone)
{
    SingleInstance first(path());
    ASSERT_EQ(first.claim(), SingleInstance::Role::Owner); // holds the lock, never listens
    SingleInstance second(path());
    EXPECT_EQ(second.claim(50), SingleInstance::Role::Alone);
    EXPECT_TRUE(second.problem().contains(QStringLiteral("lock")))
        << second.problem().toStdString();
}

TEST_F(SingleInstanceTest, OnlyTheUserConnectsAndBadRequestsCloseTheirConnection)
{
    SingleInstance owner(path());
    ASSERT_EQ(owner.claim(), SingleInstance::Role::Owner);
    ASSERT_TRUE(owner.listen(echo));
    EXPECT_EQ(QFileInfo(path()).permissions() &
                  (QFile::ReadOther | QFile::WriteOther | QFile::ReadGroup | QFile::WriteGroup),
              QFile::Permissions());

    // A line that never ends, and more than a request may be.
    for (const QByteArray &bytes : {QByteArray("\x01\xff\x00partial", 10),
                                    QByteArray(SingleInstance::kMaxRequest + 10, 'x')}) {
        QLocalSocket raw;
        raw.connectToServer(path());
        ASSERT_TRUE(raw.waitForConnected(2000));
        raw.write(bytes);
        QSignalSpy closed(&raw, &QLocalSocket::disconnected);
        EXPECT_TRUE(closed.wait(SingleInstance::kRequestMs + 5000)) << bytes.size();
        EXPECT_TRUE(raw.readAll().isEmpty());
    }
    EXPECT_TRUE(requests.isEmpty());
    // Bytes of any kind on one line reach the handler as they are.
    const QByteArray binary("\x00\xfe{]\"", 5);
    EXPECT_EQ(askOnce(binary), "got " + binary);
    EXPECT_EQ(requests, QList<QByteArray>{binary});
}

TEST_F(SingleInstanceTest, SocketThatIsNotOursIsLeftAlone)
{
    const QString folder = QFileInfo(path()).absolutePath();
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(leaveDeadSocket(path()));
    // Only root can give a file away.
    if (::chown(QFile::encodeName(path()).constData(), 65534, 65534) != 0)
        GTEST_SKIP() << "needs root to make a file of another user";
    SingleInstance start(path());
    EXPECT_EQ(start.claim(), SingleInstance::Role::Alone);
    EXPECT_TRUE(start.problem().contains(QStringLiteral("another user")));
    EXPECT_TRUE(QFileInfo::exists(path()));
    EXPECT_FALSE(start.listen(echo));

    ASSERT_EQ(::chown(QFile::encodeName(folder).constData(), 65534, 65534), 0);
    SingleInstance inForeignFolder(path());
    EXPECT_EQ(inForeignFolder.claim(), SingleInstance::Role::Alone);
}

TEST_F(SingleInstanceTest, PlaceThatCannotHoldASocketMeansAlone)
{
    // A name too long for a socket address.
    SingleInstance start(dir.filePath(QString(120, QLatin1Char('n')) + "/instance"));
    EXPECT_EQ(start.claim(), SingleInstance::Role::Alone);
    EXPECT_FALSE(start.problem().isEmpty());
    EXPECT_EQ(start.ask("x", 100), std::nullopt);
}

} // namespace
