#include "loopbackserver.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

LoopbackServer::LoopbackServer(Handler handler) : m_handler(std::move(handler))
{
    m_listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    if (m_listener < 0 || ::bind(m_listener, reinterpret_cast<sockaddr *>(&address), length) != 0 ||
        ::listen(m_listener, 16) != 0 ||
        ::getsockname(m_listener, reinterpret_cast<sockaddr *>(&address), &length) != 0 ||
        ::pipe(m_wake) != 0)
        return;
    m_port = ntohs(address.sin_port);
    m_thread = std::thread([this] { serve(); });
}

LoopbackServer::~LoopbackServer()
{
    if (m_thread.joinable()) {
        [[maybe_unused]] const ssize_t n = ::write(m_wake[1], "x", 1);
        m_thread.join();
    }
    for (int fd : {m_listener, m_wake[0], m_wake[1]})
        if (fd >= 0)
            ::close(fd);
    for (int fd : m_held)
        ::close(fd);
}

std::string LoopbackServer::base() const
{
    return "http://127.0.0.1:" + std::to_string(m_port);
}

std::vector<std::string> LoopbackServer::requests() const
{
    std::lock_guard lock(m_mutex);
    return m_requests;
}

void LoopbackServer::serve()
{
    for (;;) {
        pollfd fds[] = {{m_listener, POLLIN, 0}, {m_wake[0], POLLIN, 0}};
        if (::poll(fds, 2, -1) < 0)
            continue;
        if (fds[1].revents)
            return;
        const int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (client >= 0)
            answer(client);
    }
}

void LoopbackServer::answer(int client)
{
    std::string request;
    char buffer[4096];
    while (request.find("\r\n\r\n") == std::string::npos) {
        pollfd fd{client, POLLIN, 0};
        if (::poll(&fd, 1, 5000) <= 0)
            break;
        const ssize_t n = ::read(client, buffer, sizeof buffer);
        if (n <= 0)
            break;
        request.append(buffer, size_t(n));
    }
    // "GET /target HTTP/1.1"
    const size_t from = request.find(' ');
    const size_t to = from == std::string::npos ? from : request.find(' ', from + 1);
    const std::string target =
        to == std::string::npos ? std::string() : request.substr(from + 1, to - from - 1);
    {
        std::lock_guard lock(m_mutex);
        m_requests.push_back(target);
    }
    const Response response = m_handler(target);
    if (response.silent) {
        m_held.push_back(client);
        return;
    }
    const std::string head =
        "HTTP/1.1 " + std::to_string(response.status) +
        (response.status == 200 ? " OK" : " Error") +
        "\r\nContent-Type: text/plain\r\nContent-Length: " + std::to_string(response.body.size()) +
        "\r\nConnection: close\r\n\r\n";
    const std::string all = head + response.body;
    for (size_t sent = 0; sent < all.size();) {
        const ssize_t n = ::send(client, all.data() + sent, all.size() - sent, MSG_NOSIGNAL);
        if (n <= 0)
            break;
        sent += size_t(n);
    }
    ::close(client);
}
