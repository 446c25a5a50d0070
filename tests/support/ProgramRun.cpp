#include "tests/support/ProgramRun.h"

#include "tests/support/TestFolder.h"
#include "tests/support/TestProgram.h"

namespace tests
{
ProgramRun RunProgram(const std::string& strProgram, const std::vector<std::string>& arguments,
                      const std::filesystem::path& folder)
{
    const auto quoted = [](const std::string& strText) { return '"' + strText + '"'; };
    const std::filesystem::path test = ProgramFile();
    const auto program = test.parent_path() / (strProgram + test.extension().string());
    const auto output = folder / "output.txt";
    const auto errors = folder / "errors.txt";
    std::string strLine = quoted(program.string());
    for (const std::string& strArgument : arguments)
        strLine += ' ' + quoted(strArgument);
    strLine += " >" + quoted(output.string()) + " 2>" + quoted(errors.string());
    const int nExitCode = RunShellLine(strLine);
    ProgramRun run = {nExitCode, ReadBytes(output), ReadBytes(errors)};
    std::filesystem::remove(output);
    std::filesystem::remove(errors);
    return run;
}
} // namespace tests
