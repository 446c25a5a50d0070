// What documents say of programs, held against the programs.
#include "tests/support/Pattern.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestProgram.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

namespace
{
using namespace tests;

const std::filesystem::path samples = SAMPLES_FOLDER;
const std::filesystem::path documents = samples.parent_path() / "docs";

// The lines behind the first that is this one, up to one that begins otherwise, without that beginning.
std::string Block(const std::string& strText, const std::string& strFirst, const std::string& strBeginning)
{
    std::istringstream lines(strText);
    std::string strLine, strBlock;
    while (std::getline(lines, strLine) && strLine != strFirst)
        continue;
    while (std::getline(lines, strLine) && strLine.starts_with(strBeginning))
        strBlock += strLine.substr(strBeginning.size()) + '\n';
    return strBlock;
}

TEST(HostGuideTest, ShowsWhatTheMinimalHostPrints)
{
    const std::string strGuide = ReadBytes(documents / "host-guide.md");
    ProgramRun run = RunProgram("minimal-host", {(ProgramFile().parent_path() / "korihvui.dll").string()});
    std::erase(run.strErrors, '\r');
    EXPECT_EQ(0, run.nExitCode);
    EXPECT_EQ(Block(strGuide, "    $ minimal-host korihvui.dll >trace.txt", "    "), run.strErrors);
    EXPECT_NE(std::string::npos, run.strOutput.find("Ihvui: GetClassObject"));
}

TEST(HostGuideTest, QuotesTheMinimalHost)
{
    const std::string strGuide = ReadBytes(documents / "host-guide.md");
    const std::string strHost = ReadBytes(samples / "minimal-host/main.cpp");
    const auto quotes = Found(strGuide, "```cpp\n([^`]*)```");
    for (const Match& quote : quotes)
        EXPECT_NE(std::string::npos, strHost.find(quote[1])) << quote[1];
    EXPECT_FALSE(quotes.empty());
}

std::set<std::string> Names(const std::string& strText, const char* szPattern)
{
    std::set<std::string> names;
    for (const Match& name : Found(strText, szPattern))
        names.insert(name[1]);
    return names;
}

TEST(ManualTest, NamesTheCommandsAndOptionsThatThereAre)
{
    const std::string strPage = ReadBytes(documents / "korihost.1");
    std::string strHelp = RunProgram("korihost", {"--help"}).strOutput;
    std::erase(strHelp, '\r');
    const std::set<std::string> commands = Names(Block(strHelp, "Subcommands:", "  "), "(?:^|\n)([a-z]+) ");
    EXPECT_EQ(commands, Names(strPage, "\n\\.Ss ([a-z]+)"));
    for (const std::string& strCommand : commands)
        strHelp += RunProgram("korihost", {strCommand, "--help"}).strOutput;
    EXPECT_EQ(Names(strHelp, "--([a-z]+(?:-[a-z]+)*)"), Names(strPage, "(?:Fl|,) -([a-z]+(?:-[a-z]+)*)"));
}
} // namespace
