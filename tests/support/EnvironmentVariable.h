// A variable of the environment for one scope, for programs that are started in it.
#pragma once

#include "tests/support/TestFolder.h"

#include <windows.h>

namespace tests
{
class CEnvironmentVariable
{
public:
    CEnvironmentVariable(const char* szName, const std::filesystem::path& value) : m_name(Widen(szName))
    {
        m_old.resize(GetEnvironmentVariableW(m_name.c_str(), nullptr, 0));
        GetEnvironmentVariableW(m_name.c_str(), m_old.data(), static_cast<DWORD>(m_old.size()));
        SetEnvironmentVariableW(m_name.c_str(), PlatformNameOf(value).c_str());
    }
    ~CEnvironmentVariable()
    {
        SetEnvironmentVariableW(m_name.c_str(), m_old.empty() ? nullptr : m_old.c_str());
    }
    CEnvironmentVariable(const CEnvironmentVariable&) = delete;
    CEnvironmentVariable& operator=(const CEnvironmentVariable&) = delete;

private:
    CWideString m_name;
    CWideString m_old; // with its terminator
};
} // namespace tests
