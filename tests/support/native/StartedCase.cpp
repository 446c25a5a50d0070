#include "tests/support/StartedCase.h"

#include <cerrno>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tests
{
namespace
{
pid_t NumberOf(void* pProcess)
{
    return static_cast<pid_t>(reinterpret_cast<std::intptr_t>(pProcess));
}
} // namespace

CStartedCase::CStartedCase(const std::filesystem::path& program, const std::string& name)
{
    std::string strProgram = program.string();
    std::string strFilter = "--gtest_filter=" + name;
    std::string strBrief = "--gtest_brief=1";
    std::string strDisabled = "--gtest_also_run_disabled_tests";
    char* const arguments[] = {strProgram.data(), strFilter.data(), strBrief.data(), strDisabled.data(), nullptr};
    pid_t process = 0;
    if (const int nError = posix_spawn(&process, strProgram.c_str(), nullptr, nullptr, arguments, environ))
        throw std::system_error(nError, std::generic_category(), strProgram);
    m_pProcess = reinterpret_cast<void*>(static_cast<std::intptr_t>(process));
}

CStartedCase::~CStartedCase()
{
    Kill();
}

void CStartedCase::Kill()
{
    if (!m_pProcess)
        return;
    const pid_t process = NumberOf(m_pProcess);
    kill(process, SIGKILL);
    while (waitpid(process, nullptr, 0) < 0 && errno == EINTR)
        ;
    m_pProcess = nullptr;
}

bool CStartedCase::HasPassedWithin(std::chrono::seconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    int nStatus = 0;
    while (m_pProcess && waitpid(NumberOf(m_pProcess), &nStatus, WNOHANG) == 0)
    {
        if (std::chrono::steady_clock::now() >= end)
            Kill();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    const bool bEnded = m_pProcess != nullptr;
    m_pProcess = nullptr;
    return bEnded && WIFEXITED(nStatus) && WEXITSTATUS(nStatus) == 0;
}
} // namespace tests
