#include "leakcheck.h"

#if defined(__SANITIZE_ADDRESS__)
#define VELTO_LEAK_CHECK 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VELTO_LEAK_CHECK 1
#endif
#endif

#ifdef VELTO_LEAK_CHECK

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace {

int threadCount()
{
    std::error_code error;
    int count = 0;
    for (std::filesystem::directory_iterator it("/proc/self/task", error), end; !error && it != end;
         it.increment(error))
        ++count;
    return count;
}

void waitForOtherThreads()
{
    using namespace std::chrono;
    // Threads that never end (a library's own) cost this much per exit.
    const auto giveUp = steady_clock::now() + milliseconds(300);
    while (threadCount() > 1 && steady_clock::now() < giveUp)
        std::this_thread::sleep_for(milliseconds(1));
}

} // namespace

void settleThreadsBeforeLeakCheck()
{
    // Registered before Qt's exit handlers, so it runs after them.
    std::atexit(waitForOtherThreads);
}

#else

void settleThreadsBeforeLeakCheck() {}

#endif
