#include "netguard.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>

namespace {

std::atomic<int> refusals{0};
std::mutex lastMutex;
std::string last;

void refuse(const std::string &what)
{
    ++refusals;
    {
        std::lock_guard lock(lastMutex);
        last = what;
    }
    std::fprintf(stderr, "netguard: refused %s: tests never leave the machine\n", what.c_str());
    if (const char *log = std::getenv("VELTO_NETGUARD_LOG")) {
        const int fd = ::open(log, O_WRONLY | O_CREAT | O_APPEND, 0600);
        if (fd >= 0) {
            const std::string line = what + "\n";
            [[maybe_unused]] const ssize_t n = ::write(fd, line.data(), line.size());
            ::close(fd);
        }
    }
}

bool loopback(const sockaddr *addr)
{
    switch (addr->sa_family) {
    case AF_INET: {
        const auto *in = reinterpret_cast<const sockaddr_in *>(addr);
        return (ntohl(in->sin_addr.s_addr) >> 24) == 127;
    }
    case AF_INET6: {
        const auto *in6 = reinterpret_cast<const sockaddr_in6 *>(addr);
        if (IN6_IS_ADDR_LOOPBACK(&in6->sin6_addr))
            return true;
        return IN6_IS_ADDR_V4MAPPED(&in6->sin6_addr) && in6->sin6_addr.s6_addr[12] == 127;
    }
    default:
        return true; // local sockets: the X server, D-Bus
    }
}

std::string describe(const sockaddr *addr)
{
    char text[NI_MAXHOST] = "?";
    const socklen_t size = addr->sa_family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
    getnameinfo(addr, size, text, sizeof text, nullptr, 0, NI_NUMERICHOST);
    return std::string("a connection to ") + text;
}

bool localName(const char *node)
{
    for (const char *name : {"localhost", "localhost.localdomain", "ip6-localhost"})
        if (std::strcmp(node, name) == 0)
            return true;
    in_addr v4{};
    if (inet_pton(AF_INET, node, &v4) == 1)
        return (ntohl(v4.s_addr) >> 24) == 127;
    in6_addr v6{};
    return inet_pton(AF_INET6, node, &v6) == 1 && IN6_IS_ADDR_LOOPBACK(&v6);
}

template<typename F> F next(const char *name)
{
    return reinterpret_cast<F>(dlsym(RTLD_NEXT, name));
}

} // namespace

int netGuardRefusals()
{
    return refusals;
}

std::string netGuardLastRefusal()
{
    std::lock_guard lock(lastMutex);
    return last;
}

extern "C" int connect(int fd, const sockaddr *addr, socklen_t length)
{
    using Connect = int (*)(int, const sockaddr *, socklen_t);
    static const Connect real = next<Connect>("connect");
    if (addr && !loopback(addr)) {
        refuse(describe(addr));
        errno = ENETUNREACH;
        return -1;
    }
    return real(fd, addr, length);
}

extern "C" int getaddrinfo(const char *node, const char *service, const addrinfo *hints,
                           addrinfo **result)
{
    using Lookup = int (*)(const char *, const char *, const addrinfo *, addrinfo **);
    static const Lookup real = next<Lookup>("getaddrinfo");
    if (node && !localName(node)) {
        refuse(std::string("a look-up of ") + node);
        return EAI_NONAME;
    }
    return real(node, service, hints, result);
}
