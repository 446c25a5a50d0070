#include "tests/support/TestProgram.h"

#include "tests/support/TestFolder.h"

#include <algorithm>

namespace tests
{
namespace
{
// Longer than any case may take.
constexpr std::chrono::minutes limit(10);
} // namespace

std::filesystem::path ProgramFile()
{
    WCHAR szProgram[MAX_PATH + 1] = {};
    GetModuleFileNameW(nullptr, szProgram, MAX_PATH);
    CWideString name(szProgram);
    if (std::filesystem::path::preferred_separator == '/')
    {
        // The stand-in shows the machine's own files as those of a drive.
        name.erase(0, std::size("Z:") - 1);
        std::replace(name.begin(), name.end(), WCHAR{'\\'}, WCHAR{'/'});
    }
    return name;
}

CStartedProgram StartCase(const std::filesystem::path& program, const std::string& name)
{
    return {program, {"--gtest_filter=" + name, "--gtest_brief=1", "--gtest_also_run_disabled_tests"}};
}

bool RunCase(const std::filesystem::path& program, const std::string& name)
{
    return StartCase(program, name).ExitCodeWithin(limit) == 0;
}

ProgramRun RunProgram(const std::string& strProgram, const std::vector<std::string>& arguments)
{
    const CTestFolder folder;
    const auto output = folder.Path() / "output.txt";
    const auto errors = folder.Path() / "errors.txt";
    const std::filesystem::path test = ProgramFile();
    CStartedProgram program(test.parent_path() / (strProgram + test.extension().string()), arguments, output, errors);
    const int nExitCode = program.ExitCodeWithin(limit);
    return {nExitCode, ReadBytes(output), ReadBytes(errors)};
}
} // namespace tests
