#include <windows.h>

#include "tests/support/TestProgram.h"
#include "values/Unique.h"

#include <system_error>

namespace tests
{
CStartedProgram::CStartedProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                                 const std::filesystem::path& output, const std::filesystem::path& errors)
{
    std::wstring strLine = L'"' + program.wstring() + L'"';
    for (const auto& argument : arguments)
        strLine += L" \"" + std::filesystem::path(argument).wstring() + L'"';
    SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
    const auto open = [&](const std::filesystem::path& file)
    {
        return CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &inherited,
                           CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    };
    const CUniqueFile outputFile(output.empty() ? INVALID_HANDLE_VALUE : open(output));
    const CUniqueFile errorsFile(errors.empty() ? INVALID_HANDLE_VALUE : open(errors));
    STARTUPINFOW start = {};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    start.hStdOutput = outputFile ? outputFile.Get() : GetStdHandle(STD_OUTPUT_HANDLE);
    start.hStdError = errorsFile ? errorsFile.Get() : GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), strLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process))
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), program.string());
    CloseHandle(process.hThread);
    m_pProcess = process.hProcess;
}

void CStartedProgram::Kill()
{
    if (!m_pProcess)
        return;
    TerminateProcess(m_pProcess, static_cast<UINT>(-1));
    ExitCode();
}

int CStartedProgram::ExitCode()
{
    DWORD dwExitCode = 0;
    WaitForSingleObject(m_pProcess, INFINITE);
    GetExitCodeProcess(m_pProcess, &dwExitCode);
    CloseHandle(m_pProcess);
    m_pProcess = nullptr;
    return static_cast<int>(dwExitCode);
}

int CStartedProgram::ExitCodeWithin(std::chrono::seconds limit)
{
    const auto limitMs = std::chrono::duration_cast<std::chrono::milliseconds>(limit);
    DWORD dwExitCode = static_cast<DWORD>(-1);
    if (m_pProcess && WaitForSingleObject(m_pProcess, static_cast<DWORD>(limitMs.count())) == WAIT_OBJECT_0)
        GetExitCodeProcess(m_pProcess, &dwExitCode);
    Kill();
    return static_cast<int>(dwExitCode);
}
} // namespace tests
