#include "host/Watchdog.h"

#include <condition_variable>
#include <cstdlib>
#include <iostream>
#include <mutex>

namespace
{
constexpr int exitRefused = 1;

void Watch(const std::stop_token& stop, std::chrono::seconds time)
{
    std::mutex mutex;
    std::condition_variable_any stopped;
    std::unique_lock lock(mutex);
    stopped.wait_for(lock, stop, time, [] { return false; });
    if (stop.stop_requested())
        return;
    std::cerr << "korihost: no end within " << time.count()
              << " seconds: the WLAN service or the extension's dialog does not answer; given up" << std::endl;
    std::_Exit(exitRefused);
}
} // namespace

CWatchdog::CWatchdog(std::chrono::seconds time) : m_thread([time](const std::stop_token& stop) { Watch(stop, time); })
{
}
