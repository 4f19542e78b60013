#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

// Ends the test program with a message when the scope it guards is not left
// within the patience given: a reader that waits on a pipe or reads an endless
// device then fails its test at once instead of hanging the run.
class Deadline
{
public:
    explicit Deadline(std::string what, std::chrono::seconds patience = std::chrono::seconds(30))
        : m_what(std::move(what))
    {
        m_watch = std::thread([this, patience] {
            std::unique_lock lock(m_mutex);
            if (!m_done.wait_for(lock, patience, [this] { return m_left; })) {
                std::fprintf(stderr, "FAILED: %s did not finish within %lld s\n", m_what.c_str(),
                             static_cast<long long>(patience.count()));
                std::fflush(stderr);
                std::_Exit(1);
            }
        });
    }
    ~Deadline()
    {
        {
            std::lock_guard lock(m_mutex);
            m_left = true;
        }
        m_done.notify_one();
        m_watch.join();
    }
    Deadline(const Deadline &) = delete;
    Deadline &operator=(const Deadline &) = delete;

private:
    std::string m_what;
    std::mutex m_mutex;
    std::condition_variable m_done;
    bool m_left = false;
    std::thread m_watch;
};
