// Several processes write to one log, this one on two threads, and one of them is killed: what the others write stays whole,
// and no lock is left.
// Who waits for the log's lock gets it in no order that anybody promises. So whoever has to be through at some time has a
// number of lines to write, and whoever writes for ever is the one that is killed.
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TestProgram.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"
#include "values/RegistryValues.h"

#include <chrono>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <random>
#include <regex>
#include <thread>

namespace
{
constexpr auto survivorCase = "KilledLogWriter.DISABLED_Survivor";
constexpr auto victimCase = "KilledLogWriter.DISABLED_Victim";
constexpr auto latecomerCase = "KilledLogWriter.DISABLED_Latecomer";

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

// One of several processes that write to the log that the environment names.
class COtherLogWriter
{
public:
    COtherLogWriter()
    {
        // Natively a process has a registry of its own here. Where all share one, the first one's values are there and stay: a
        // writer that took them away at its end would take them from another that just begins.
        DWORD dwEnable = 0;
        if (!RegReadDword(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), &dwEnable))
        {
            m_enable.emplace(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), DWORD{1});
            m_path.emplace(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("LogPath"), tests::Widen(std::getenv(szLogVariable)));
        }
        KorCmnTracer::Start(OLESTR("unused"), false, false);
    }
    ~COtherLogWriter()
    {
        KorCmnTracer::Stop();
    }
    COtherLogWriter(const COtherLogWriter&) = delete;
    COtherLogWriter& operator=(const COtherLogWriter&) = delete;

private:
    std::optional<tests::CRegistryValue> m_enable;
    std::optional<tests::CRegistryValue> m_path;
};

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
    const COtherLogWriter writer;
    WriteBesideVictim("survivor", std::getenv(szLogVariable));
}

TEST(KilledLogWriter, DISABLED_Victim)
{
    const COtherLogWriter writer;
    Write("victim", std::numeric_limits<unsigned>::max());
}

TEST(KilledLogWriter, DISABLED_Latecomer)
{
    const COtherLogWriter writer;
    Write("latecomer", 1);
}

// What the log holds beside whole lines, and each writer's lines as they follow one another.
struct Reading
{
    std::vector<std::string> pieces;
    std::map<std::string, unsigned> lines;
};

Reading Read(const std::string& strLog)
{
    static const std::regex form(R"([\d:.]{12} \[[ 0-9A-F]{8}\]   Ihvui: (\w+) line (\d+)\r\n)");
    Reading reading;
    std::size_t nRead = 0;
    for (std::sregex_iterator it(strLog.begin(), strLog.end(), form), end; it != end; ++it)
    {
        const auto& match = *it;
        if (match.prefix().length() != 0)
            reading.pieces.push_back(match.prefix());
        nRead = static_cast<std::size_t>(match.position() + match.length());
        const auto uNumber = static_cast<unsigned>(std::stoul(match[2]));
        unsigned& uNext = reading.lines[match[1]];
        EXPECT_EQ(uNext, uNumber) << match.str();
        uNext = uNumber + 1;
    }
    if (nRead != strLog.size())
        reading.pieces.push_back(strLog.substr(nRead));
    return reading;
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

    tests::CStartedProgram latecomer = tests::StartCase(tests::ProgramFile(), latecomerCase);
    EXPECT_EQ(0, latecomer.ExitCodeWithin(longestWait)) << "a lock is left";
    EXPECT_EQ(0, survivor.ExitCodeWithin(longestWait)) << "a lock is left";
    own.join();
    another.join();
    KorCmnTracer::Stop();

    Reading reading = Read(log.Bytes());
    EXPECT_EQ(uLines, reading.lines["parent"]);
    EXPECT_EQ(uLines, reading.lines["another"]);
    EXPECT_EQ(uLines, reading.lines["survivor"]);
    EXPECT_EQ(1u, reading.lines["latecomer"]);
    // A line is written before its end: at most the victim's last one has none.
    EXPECT_GE(1u, reading.pieces.size());
    const std::regex piece(R"([\d:.]{12} \[[ 0-9A-F]{8}\]   Ihvui: victim line )" + std::to_string(reading.lines["victim"]));
    for (const std::string& strPiece : reading.pieces)
        EXPECT_TRUE(std::regex_match(strPiece, piece)) << strPiece;
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
