#include "loopbackserver.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <optional>

namespace {

using Clock = std::chrono::steady_clock;

QByteArray metadataBlock(const QByteArray &title)
{
    const QByteArray text = "StreamTitle='" + title + "';";
    const qsizetype blocks = qMin<qsizetype>((text.size() + 15) / 16, 255);
    QByteArray block(1, char(blocks));
    block += text.left(blocks * 16);
    block.append(blocks * 16 - (block.size() - 1), '\0');
    return block;
}

QByteArray answer(int status, const QByteArray &type, const QByteArray &body)
{
    const QByteArray reason = status == 200 ? "OK" : status == 404 ? "Not Found" : "Error";
    return "HTTP/1.1 " + QByteArray::number(status) + ' ' + reason + "\r\nContent-Type: " + type +
           "\r\nContent-Length: " + QByteArray::number(body.size()) +
           "\r\nConnection: close\r\n\r\n" + body;
}

} // namespace

void LoopbackServer::listen()
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (m_listener < 0)
        return;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK); // never beyond this machine
    socklen_t length = sizeof address;
    if (::bind(m_listener, reinterpret_cast<sockaddr *>(&address), length) != 0 ||
        ::listen(m_listener, 16) != 0 ||
        ::getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &length) != 0) {
        ::close(m_listener);
        m_listener = -1;
        return;
    }
    m_port = ntohs(address.sin_port);
    m_acceptor = std::thread([this] { acceptLoop(); });
}

LoopbackServer::~LoopbackServer()
{
    m_stop = true;
    // Each client's thread waits at most 50 ms at a time, so all see m_stop.
    if (m_acceptor.joinable())
        m_acceptor.join();
    for (std::thread &t : m_threads)
        t.join();
    if (m_listener >= 0)
        ::close(m_listener);
}

QString LoopbackServer::url(const QString &path) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(path);
}

void LoopbackServer::page(const QByteArray &path, const QByteArray &body, const QByteArray &type)
{
    std::lock_guard lock(m_mutex);
    m_pages[path] = {type, body};
}

std::vector<std::string> LoopbackServer::requests() const
{
    std::lock_guard lock(m_mutex);
    return m_requests;
}

int LoopbackServer::asked(const std::string &target) const
{
    std::lock_guard lock(m_mutex);
    return int(std::ranges::count(m_requests, target));
}

void LoopbackServer::acceptLoop()
{
    while (!m_stop) {
        pollfd p{m_listener, POLLIN, 0};
        if (::poll(&p, 1, 50) <= 0)
            continue;
        const int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client < 0)
            continue;
        std::lock_guard lock(m_mutex);
        m_threads.emplace_back([this, client] { serve(client); });
    }
}

bool LoopbackServer::sendAll(int client, const QByteArray &bytes)
{
    qsizetype sent = 0;
    while (sent < bytes.size() && !m_stop) {
        // A client that stops reading must not hold the server's end.
        pollfd p{client, POLLOUT, 0};
        if (::poll(&p, 1, 50) == 0)
            continue;
        const ssize_t n = ::send(client, bytes.constData() + sent, size_t(bytes.size() - sent),
                                 MSG_NOSIGNAL | MSG_DONTWAIT);
        if (n < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (n <= 0)
            return false;
        sent += n;
    }
    return sent == bytes.size();
}

void LoopbackServer::serve(int client)
{
    QByteArray head;
    char buffer[4096];
    while (!head.contains("\r\n\r\n") && head.size() < 65536 && !m_stop) {
        pollfd p{client, POLLIN, 0};
        if (::poll(&p, 1, 50) <= 0)
            continue;
        const ssize_t n = ::recv(client, buffer, sizeof buffer, 0);
        if (n <= 0)
            break;
        head.append(buffer, n);
    }
    // "GET /target HTTP/1.1"; a connection that asked nothing is not a request.
    const QByteArray target = head.left(head.indexOf("\r\n")).split(' ').value(1);
    std::optional<std::pair<QByteArray, QByteArray>> page;
    if (!head.isEmpty()) {
        std::lock_guard lock(m_mutex);
        m_requests.push_back(target.toStdString());
        auto it = m_pages.find(target);
        if (it == m_pages.end())
            it = m_pages.find(target.left(target.indexOf('?')));
        if (it != m_pages.end())
            page = it->second;
    }
    if (page) {
        sendAll(client, answer(200, page->first, page->second));
    } else if (m_handler && !head.isEmpty()) {
        const Response response = m_handler(target.toStdString());
        if (response.silent) {
            while (!m_stop)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
        } else {
            sendAll(client, answer(response.status, "text/plain",
                                   QByteArray::fromStdString(response.body)));
        }
    } else if (target == "/stream" && !m_stream.mp3.isEmpty()) {
        ++m_streams;
        stream(client, head.toLower().contains("icy-metadata: 1"));
    } else if (!head.isEmpty()) {
        sendAll(client, answer(404, "text/plain", "Not Found"));
    }
    ::shutdown(client, SHUT_RDWR);
    ::close(client);
}

void LoopbackServer::stream(int client, bool icy)
{
    const Stream &o = m_stream;
    QByteArray head = "HTTP/1.0 200 OK\r\nContent-Type: audio/mpeg\r\nicy-name: " + o.name +
                      "\r\nicy-br: " + QByteArray::number(o.bytesPerSecond * 8 / 1000) + "\r\n";
    if (icy)
        head += "icy-metaint: " + QByteArray::number(o.metaInt) + "\r\n";
    if (!sendAll(client, head + "\r\n"))
        return;
    const Clock::time_point start = Clock::now();
    Clock::duration paused{};
    qint64 audio = 0;     // audio bytes sent
    qint64 sinceMeta = 0; // audio bytes since the last metadata block
    qint64 at = 0;        // read position in the MP3
    bool stalled = false;
    const int chunk = 800; // 50 ms at 128 kbit/s
    while (!m_stop) {
        if (o.closeAfterBytes >= 0 && audio >= o.closeAfterBytes)
            return;
        qint64 take = chunk;
        if (icy)
            take = qMin(take, o.metaInt - sinceMeta);
        QByteArray piece;
        while (piece.size() < take) {
            const qint64 part = qMin(take - piece.size(), o.mp3.size() - at);
            piece += o.mp3.mid(at, part);
            at = (at + part) % o.mp3.size();
        }
        if (!sendAll(client, piece))
            return;
        audio += take;
        sinceMeta += take;
        const double seconds = double(audio) / o.bytesPerSecond;
        if (icy && sinceMeta == o.metaInt) {
            sinceMeta = 0;
            qsizetype index = 0;
            if (o.titleSeconds > 0 && !o.titles.isEmpty())
                index = qsizetype(seconds / o.titleSeconds) % o.titles.size();
            if (!sendAll(client, metadataBlock(o.titles.value(index))))
                return;
        }
        if (!stalled && o.stallAfterSeconds >= 0 && seconds >= o.stallAfterSeconds) {
            stalled = true;
            const Clock::time_point quiet = Clock::now();
            while (!m_stop && Clock::now() - quiet < std::chrono::duration<double>(o.stallSeconds))
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            paused += Clock::now() - quiet;
        }
        // No faster than the audio plays, after the first burst.
        const auto due = start + paused +
                         std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(
                             double(audio - o.burstBytes) / o.bytesPerSecond));
        while (!m_stop && Clock::now() < due)
            std::this_thread::sleep_for(
                std::min<Clock::duration>(due - Clock::now(), std::chrono::milliseconds(20)));
    }
}

QByteArray LoopbackServer::toneMp3(double seconds)
{
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("tone.mp3"));
    QProcess ffmpeg;
    ffmpeg.start(QStringLiteral("ffmpeg"),
                 {QStringLiteral("-loglevel"), QStringLiteral("error"), QStringLiteral("-y"),
                  QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
                  QStringLiteral("sine=frequency=440:duration=%1").arg(seconds),
                  QStringLiteral("-b:a"), QStringLiteral("128k"), QStringLiteral("-write_xing"),
                  QStringLiteral("0"), QStringLiteral("-id3v2_version"), QStringLiteral("0"),
                  QStringLiteral("-f"), QStringLiteral("mp3"), out});
    if (!ffmpeg.waitForFinished(60000) || ffmpeg.exitCode() != 0)
        return {};
    QFile file(out);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
