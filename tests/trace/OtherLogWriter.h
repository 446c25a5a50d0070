// A second process that writes to a log of the first.
#pragma once

#include "tests/support/RegistryValue.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TraceLog.h"
#include "trace/KorCmnTracer.h"

#include <cstdlib>

namespace tests
{
inline constexpr const char* szLogVariable = "TRACE_TEST_LOG"; // where the other processes find the log

// One of several processes that write to the log that the environment names.
class COtherLogWriter
{
public:
    COtherLogWriter()
        : m_enable(HKEY_LOCAL_MACHINE, szTraceKey, OLESTR("EnableTraceLog"), 1),
          m_path(HKEY_LOCAL_MACHINE, szTraceKey, OLESTR("LogPath"), Widen(std::getenv(szLogVariable)))
    {
        KorCmnTracer::Start(OLESTR("unused"), false, false);
    }
    ~COtherLogWriter()
    {
        KorCmnTracer::Stop();
    }
    COtherLogWriter(const COtherLogWriter&) = delete;
    COtherLogWriter& operator=(const COtherLogWriter&) = delete;

private:
    CRegistryValue m_enable;
    CRegistryValue m_path;
};
} // namespace tests
