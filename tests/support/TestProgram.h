// Programs of the build that are started beside the running test program, and the test program itself, by cases that need a
// second process or another place to run in.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace tests
{
// The running test program's file, as the standard library takes it.
std::filesystem::path ProgramFile();

class CStartedProgram
{
public:
    // Starts the program in this process's environment. The files, when they are given, take its output and what it writes
    // to its errors. An argument must not hold a quotation mark or end with a backslash. Throws std::system_error when the
    // program cannot be started.
    CStartedProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                    const std::filesystem::path& output = {}, const std::filesystem::path& errors = {});
    // What still runs is killed.
    ~CStartedProgram()
    {
        Kill();
    }
    CStartedProgram(const CStartedProgram&) = delete;
    CStartedProgram& operator=(const CStartedProgram&) = delete;

    // Ends the process wherever it is, without a chance to put anything in order, and waits until it is gone.
    void Kill();
    // Waits for the end, however long it takes and without looking at the clock; -1 for a program that was killed.
    int ExitCode();
    // Waits for the end; -1 for a program that was killed, or is now because it took longer.
    int ExitCodeWithin(std::chrono::seconds limit);

private:
    void* m_pProcess = nullptr; // the system's handle or number of the process, null once its end is known
};

// Starts one case of a test program, a disabled one too, whose exit code is 0 when it passed.
CStartedProgram StartCase(const std::filesystem::path& program, const std::string& name);
// Runs one; true when the case passed.
bool RunCase(const std::filesystem::path& program, const std::string& name);

struct ProgramRun
{
    int nExitCode;
    std::string strOutput;
    std::string strErrors;
};
// Runs the program of the name, which lies beside the tests, to its end.
ProgramRun RunProgram(const std::string& strProgram, const std::vector<std::string>& arguments);
} // namespace tests
