// Running another program of the build and reading what it says.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace tests
{
struct ProgramRun
{
    int nExitCode;
    std::string strOutput;
    std::string strErrors;
};

// Runs the program of the name, which lies beside the tests, to its end. The arguments must not hold characters that a
// shell gives a meaning to within double quotes. The folder takes the program's output for a while.
ProgramRun RunProgram(const std::string& strProgram, const std::vector<std::string>& arguments,
                      const std::filesystem::path& folder);

// Hands the line to the system's shell; the exit code of what it ran.
int RunShellLine(const std::string& strLine);
} // namespace tests
