#include <windows.h>

#include <chrono>
#include <ctime>
#include <thread>

#include <unistd.h>

namespace
{
thread_local DWORD t_dwLastError = ERROR_SUCCESS;
}

DWORD WINAPI GetLastError()
{
    return t_dwLastError;
}

void WINAPI SetLastError(DWORD dwError)
{
    t_dwLastError = dwError;
}

void WINAPI GetLocalTime(LPSYSTEMTIME pTime)
{
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    std::tm local{};
    localtime_r(&now.tv_sec, &local);
    const auto word = [](long nValue) { return static_cast<WORD>(nValue); };
    *pTime = {.wYear = word(local.tm_year + 1900),
              .wMonth = word(local.tm_mon + 1),
              .wDayOfWeek = word(local.tm_wday),
              .wDay = word(local.tm_mday),
              .wHour = word(local.tm_hour),
              .wMinute = word(local.tm_min),
              .wSecond = word(local.tm_sec),
              .wMilliseconds = word(now.tv_nsec / 1'000'000)};
}

void WINAPI Sleep(DWORD dwMilliseconds)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(dwMilliseconds));
}

DWORD WINAPI GetCurrentThreadId()
{
    // Asked once a thread: every trace line carries it.
    thread_local const auto dwThread = static_cast<DWORD>(gettid());
    return dwThread;
}

DWORD WINAPI GetCurrentProcessId()
{
    return static_cast<DWORD>(getpid());
}
