#include "tests/support/TestProgram.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
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

CStartedProgram::CStartedProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                                 const std::filesystem::path& output, const std::filesystem::path& errors)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const auto& [nDescriptor, file] : {std::pair(STDOUT_FILENO, output), std::pair(STDERR_FILENO, errors)})
        if (!file.empty())
            posix_spawn_file_actions_addopen(&actions, nDescriptor, file.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                             S_IRUSR | S_IWUSR);
    // The system does not write to them, whatever its declaration says.
    std::vector<char*> line = {const_cast<char*>(program.c_str())};
    for (const auto& argument : arguments)
        line.push_back(const_cast<char*>(argument.c_str()));
    line.push_back(nullptr);
    pid_t process = 0;
    const int nError = posix_spawn(&process, program.c_str(), &actions, nullptr, line.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (nError != 0)
        throw std::system_error(nError, std::generic_category(), program.string());
    m_pProcess = reinterpret_cast<void*>(static_cast<std::intptr_t>(process));
}

void CStartedProgram::Kill()
{
    if (!m_pProcess)
        return;
    kill(NumberOf(m_pProcess), SIGKILL);
    ExitCode();
}

int CStartedProgram::ExitCode()
{
    int nStatus = 0;
    while (waitpid(NumberOf(m_pProcess), &nStatus, 0) < 0 && errno == EINTR)
        ;
    m_pProcess = nullptr;
    return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}

int CStartedProgram::ExitCodeWithin(std::chrono::seconds limit)
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
    return bEnded && WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}
} // namespace tests
