#include "tests/support/TestProgram.h"

#include "trace/WideText.h"

#include <algorithm>
#include <cstdlib>

namespace tests
{
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

bool RunCase(const std::filesystem::path& program, const std::string& name)
{
    const auto command = '"' + program.string() + "\" --gtest_brief=1 --gtest_also_run_disabled_tests --gtest_filter=" + name;
    return std::system(command.c_str()) == 0;
}
} // namespace tests
