// Ends the program when an operation that it cannot interrupt, such as a call to the WLAN service, never comes back.
#pragma once

#include <chrono>
#include <thread>

class CWatchdog
{
public:
    // Unless this object has gone before, the program ends after the time with a line on standard error and exit code 1.
    explicit CWatchdog(std::chrono::seconds time);

private:
    std::jthread m_thread;
};
