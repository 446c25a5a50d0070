#include <windows.h>

#include "tests/support/StartedCase.h"

#include <system_error>

namespace tests
{
CStartedCase::CStartedCase(const std::filesystem::path& program, const std::string& name)
{
    std::wstring strLine = L'"' + program.wstring() + L"\" --gtest_brief=1 --gtest_also_run_disabled_tests --gtest_filter=" +
                           std::wstring(name.begin(), name.end());
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), strLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process))
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), program.string());
    CloseHandle(process.hThread);
    m_pProcess = process.hProcess;
}

CStartedCase::~CStartedCase()
{
    Kill();
}

void CStartedCase::Kill()
{
    if (!m_pProcess)
        return;
    TerminateProcess(m_pProcess, 1);
    WaitForSingleObject(m_pProcess, INFINITE);
    CloseHandle(m_pProcess);
    m_pProcess = nullptr;
}

bool CStartedCase::HasPassedWithin(std::chrono::seconds limit)
{
    if (!m_pProcess)
        return false;
    const auto limitMs = std::chrono::duration_cast<std::chrono::milliseconds>(limit);
    DWORD dwExitCode = 1;
    if (WaitForSingleObject(m_pProcess, static_cast<DWORD>(limitMs.count())) == WAIT_OBJECT_0)
        GetExitCodeProcess(m_pProcess, &dwExitCode);
    Kill();
    return dwExitCode == 0;
}
} // namespace tests
