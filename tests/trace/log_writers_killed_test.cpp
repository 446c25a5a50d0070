// Several processes write to one log, this one on two threads, and one of them is killed: what the others write stays whole,
// and no lock is left.
// Who waits for the log's lock gets it in no order that anybody promises. So whoever has to be through at some time has a
// number of lines to write, and whoever writes for ever is the one that is killed.
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/Pattern.h"
#include "tests/support/TestProgram.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

#include <chrono>
#include <cstdlib>
#include <limits>
#include <map>
#include <random>
#include <thread>

namespace
{
constexpr auto survivorCase = "KilledLogWriter.DISABLED_Survivor";
constexpr auto victimCase = "KilledLogWriter.DISABLED_Victim";

constexpr int killings = 4;
constexpr unsigned uLines = 2000 / SLOWED_DOWN;
// The victim is killed some time after a line of this number, at random up to here.
constexpr unsigned uLastLines = uLines / 2;

// Far longer than anything takes on a busy machine, and shorter than what a case may take.
constexpr std::chrono::seconds longestWait(120);

// Waits for a line that begins so; false when none comes in time.
bool WaitForLine(const std::filesystem::path& log, const std::string& strBeginning)
{
    const auto end = std::chrono::steady_clock::now() + longestWait;
    while (tests::ReadBytes(log).find("Ihvui: " + strBeginning) == std::string::npos)
    {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        Sleep(10);
    }
    return true;
}

constexpr const char* szLogVariable = "TRACE_TEST_LOG"; // where the other processes find the log

// Begins to write to the log that the environment names, as one of several processes. Natively a process has a registry of
// its own here; where all share one, nobody who still begins is left when the first value is gone.
tests::CRegistryValue StartOtherWriter()
{
    tests::CRegistryValue enable(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), 1);
    KorCmnTracer::Start(tests::Widen(std::getenv(szLogVariable)).c_str(), false, false);
    return enable;
}

// Writes lines with their numbers.
void Write(const char* szWriter, unsigned uCount)
{
    const CWideString name = tests::Widen(szWriter);
    for (unsigned uLine = 0; uLine < uCount; ++uLine)
        IhvuiTrace(traceLevelInfo, OLESTR("%s line %u\n"), name.c_str(), uLine);
}

// The lines that have to arrive beside those of the victim. They begin once it writes, which nobody keeps it from until then.
void WriteBesideVictim(const char* szWriter, const std::filesystem::path& log)
{
    EXPECT_TRUE(WaitForLine(log, "victim line 0")) << "the victim does not write";
    Write(szWriter, uLines);
}

TEST(KilledLogWriter, DISABLED_Survivor)
{
    const auto enable = StartOtherWriter();
    WriteBesideVictim("survivor", std::getenv(szLogVariable));
}

TEST(KilledLogWriter, DISABLED_Victim)
{
    const auto enable = StartOtherWriter();
    Write("victim", std::numeric_limits<unsigned>::max());
}

// How many lines each writer has, which follow one another; strRest receives what stands beside whole lines.
std::map<std::string, unsigned> CountLines(const std::string& strLog, std::string& strRest)
{
    static const std::string form = R"([\d:.]{12} \[[ 0-9A-F]{8}\]   Ihvui: (\w+) line (\d+)\r\n)";
    std::map<std::string, unsigned> lines;
    for (const tests::Match& line : tests::Found(strLog, form))
        EXPECT_EQ(lines[line[1]]++, std::stoul(line[2])) << line[0];
    strRest = tests::Replaced(strLog, form, "");
    return lines;
}

void KillAfter(unsigned uVictimLines)
{
    const tests::CTraceLog log;
    const tests::CTestFolder folder;
    const tests::CEnvironmentVariable logVariable(szLogVariable, log.File());
    // What the killed process would have taken away at its end goes with this folder.
    const tests::CEnvironmentVariable nativeFolder("TMPDIR", folder.Path());
    const tests::CEnvironmentVariable windowsFolder("TMP", folder.Path());
    KorCmnTracer::Start(OLESTR("unused"), false, true);
    tests::CStartedProgram survivor = tests::StartCase(tests::ProgramFile(), survivorCase);
    tests::CStartedProgram victim = tests::StartCase(tests::ProgramFile(), victimCase);
    std::jthread own(WriteBesideVictim, "parent", log.File());
    std::jthread another(WriteBesideVictim, "another", log.File());
    EXPECT_TRUE(WaitForLine(log.File(), "victim line " + std::to_string(uVictimLines)));
    victim.Kill();

    // Whoever began before may be through by now; this line comes after the killing.
    Write("latecomer", 1);
    EXPECT_EQ(0, survivor.ExitCodeWithin(longestWait)) << "a lock is left";
    own.join();
    another.join();
    KorCmnTracer::Stop();

    std::string strRest;
    auto lines = CountLines(log.Bytes(), strRest);
    EXPECT_EQ(uLines, lines["parent"]);
    EXPECT_EQ(uLines, lines["another"]);
    EXPECT_EQ(uLines, lines["survivor"]);
    EXPECT_EQ(1u, lines["latecomer"]);
    // A line goes into the file as a whole. Only where a page of the file ends may the system find its writer killed.
    constexpr std::size_t cbPage = 4096;
    const auto cbBefore = log.Bytes().find(strRest);
    EXPECT_TRUE(strRest.empty() || (cbBefore + strRest.size()) % cbPage == 0) << cbBefore << " " << strRest;
}

TEST(KilledLogWriter, TheOthersLoseNothing)
{
    const auto uSeed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(uSeed));
    std::minstd_rand random(uSeed);
    std::uniform_int_distribution<unsigned> lines(0, uLastLines);
    for (int i = 0; i < killings && !HasFailure(); ++i)
        KillAfter(lines(random));
}
} // namespace
