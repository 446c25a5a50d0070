// Ends the program when an operation that it cannot interrupt, such as a call to the WLAN service, never comes back.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

class CWatchdog
{
public:
    // Unless this object has gone before, the program ends after the time with a line on standard error and exit code 1.
    explicit CWatchdog(std::chrono::seconds time);
    ~CWatchdog();
    CWatchdog(const CWatchdog&) = delete;
    CWatchdog& operator=(const CWatchdog&) = delete;

private:
    void Watch(std::chrono::seconds time);

    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_bGone = false;
    std::jthread m_thread; // last: it uses the others
};
