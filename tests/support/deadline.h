#pragma once

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <string>
#include <thread>

// Ends the test program with a message when the scope it guards is not left
// within the patience given: a reader that waits on a pipe or reads an endless
// device then fails its test at once instead of hanging the run.
class Deadline
{
public:
    explicit Deadline(std::string what, std::chrono::seconds patience = std::chrono::seconds(30))
        : m_watch([what = std::move(what), patience, left = m_left.get_future()] {
              if (left.wait_for(patience) == std::future_status::timeout) {
                  std::fprintf(stderr, "FAILED: %s did not finish within %lld s\n", what.c_str(),
                               static_cast<long long>(patience.count()));
                  std::fflush(stderr);
                  std::_Exit(1);
              }
          })
    {
    }
    ~Deadline()
    {
        m_left.set_value();
        m_watch.join();
    }
    Deadline(const Deadline &) = delete;
    Deadline &operator=(const Deadline &) = delete;

private:
    std::promise<void> m_left; // made before the watch that waits on it
    std::thread m_watch;
};
