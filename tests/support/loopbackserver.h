#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// An HTTP server of the test's own on 127.0.0.1, answering on a thread of its
// own, so it works beside any event loop (or none). It lives as long as the
// object; every request's target is kept, in order.
class LoopbackServer
{
public:
    struct Response
    {
        int status = 200;
        std::string body;
        bool silent = false; // reads the request and never answers
    };
    using Handler = std::function<Response(const std::string &target)>;

    explicit LoopbackServer(Handler handler);
    ~LoopbackServer();
    LoopbackServer(const LoopbackServer &) = delete;
    LoopbackServer &operator=(const LoopbackServer &) = delete;

    int port() const { return m_port; }
    // "http://127.0.0.1:port"
    std::string base() const;
    std::vector<std::string> requests() const;

private:
    void serve();
    void answer(int client);

    Handler m_handler;
    int m_listener = -1;
    int m_port = 0;
    int m_wake[2] = {-1, -1};
    std::vector<int> m_held; // connections of silent answers, closed at the end
    mutable std::mutex m_mutex;
    std::vector<std::string> m_requests;
    std::thread m_thread;
};
