#include "tests/support/TestProgram.h"

#include "tests/support/StartedCase.h"
#include "values/WideText.h"

#include <algorithm>
#include <chrono>

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
    // Longer than any case may take.
    constexpr std::chrono::minutes limit(10);
    return CStartedCase(program, name).HasPassedWithin(limit);
}
} // namespace tests
