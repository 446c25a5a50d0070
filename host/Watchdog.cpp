#include "host/Watchdog.h"

#include "host/CommandEnd.h"

#include <cstdlib>
#include <iostream>

// Not by the thread's stop token: on Windows the run-time library hangs now and then when the stop comes as the thread begins to
// wait for it.
void CWatchdog::Watch(std::chrono::seconds time)
{
    std::unique_lock lock(m_mutex);
    if (m_changed.wait_for(lock, time, [this] { return m_bGone; }))
        return;
    std::cerr << "korihost: no end within " << time.count()
              << " seconds: the WLAN service or the extension's dialog does not answer; given up" << std::endl;
    std::_Exit(exitRefused);
}

CWatchdog::CWatchdog(std::chrono::seconds time) : m_thread([this, time] { Watch(time); })
{
}

CWatchdog::~CWatchdog()
{
    const std::lock_guard lock(m_mutex);
    m_bGone = true;
    m_changed.notify_all();
}
