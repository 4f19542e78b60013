#include "signalbridge.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {
int g_fds[2] = {-1, -1};
}

SignalBridge::SignalBridge(QObject *parent) : QObject(parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_fds) != 0) {
        qWarning("velto: no socket pair for signals");
        return;
    }
    m_notifier = new QSocketNotifier(g_fds[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        char byte;
        if (::read(g_fds[1], &byte, 1) > 0)
            emit terminationRequested();
    });
    struct sigaction action = {};
    action.sa_handler = &SignalBridge::handle;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

SignalBridge::~SignalBridge()
{
    signal(SIGTERM, SIG_DFL);
    signal(SIGINT, SIG_DFL);
    ::close(g_fds[0]);
    ::close(g_fds[1]);
    g_fds[0] = g_fds[1] = -1;
}

void SignalBridge::handle(int)
{
    const char byte = 1;
    // Only async-signal-safe work here.
    [[maybe_unused]] const auto n = ::write(g_fds[0], &byte, 1);
}
