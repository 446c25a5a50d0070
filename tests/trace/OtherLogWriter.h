// A second process that writes to a log of the first.
#pragma once

#include "tests/support/RegistryValue.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TraceLog.h"
#include "trace/KorCmnTracer.h"
#include "values/RegistryValues.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace tests
{
// Far longer than anything takes on a busy machine, and shorter than what a case may take.
inline constexpr std::chrono::seconds longestWait(120);

// Waits for a line that begins so; false when none comes in time.
inline bool WaitForLine(const std::filesystem::path& log, const std::string& strBeginning)
{
    const auto end = std::chrono::steady_clock::now() + longestWait;
    while (ReadBytes(log).find("Ihvui: " + strBeginning) == std::string::npos)
    {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        Sleep(10);
    }
    return true;
}

inline constexpr const char* szLogVariable = "TRACE_TEST_LOG"; // where the other processes find the log

// One of several processes that write to the log that the environment names.
class COtherLogWriter
{
public:
    COtherLogWriter()
    {
        // Natively a process has a registry of its own here. Where all share one, the first one's values are there and stay: a
        // writer that took them away at its end would take them from another that just begins.
        DWORD dwEnable = 0;
        if (!RegReadDword(HKEY_LOCAL_MACHINE, szTraceKey, OLESTR("EnableTraceLog"), &dwEnable))
        {
            m_enable.emplace(HKEY_LOCAL_MACHINE, szTraceKey, OLESTR("EnableTraceLog"), DWORD{1});
            m_path.emplace(HKEY_LOCAL_MACHINE, szTraceKey, OLESTR("LogPath"), Widen(std::getenv(szLogVariable)));
        }
        KorCmnTracer::Start(OLESTR("unused"), false, false);
    }
    ~COtherLogWriter()
    {
        KorCmnTracer::Stop();
    }
    COtherLogWriter(const COtherLogWriter&) = delete;
    COtherLogWriter& operator=(const COtherLogWriter&) = delete;

private:
    std::optional<CRegistryValue> m_enable;
    std::optional<CRegistryValue> m_path;
};
} // namespace tests
