// Several processes write to one log, and one of them is killed: what the others write stays whole, and no lock is left.
#include "tests/support/StartedCase.h"
#include "tests/support/TestProgram.h"
#include "tests/support/TraceLog.h"
#include "tests/trace/OtherLogWriter.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

#include <chrono>
#include <cstdlib>
#include <map>
#include <random>
#include <regex>
#include <thread>

namespace
{
using Clock = std::chrono::steady_clock;

constexpr auto survivorCase = "KilledLogWriter.DISABLED_Survivor";
constexpr auto victimCase = "KilledLogWriter.DISABLED_Victim";
constexpr auto latecomerCase = "KilledLogWriter.DISABLED_Latecomer";
constexpr const char* szStopVariable = "TRACE_TEST_STOP"; // they write until there is this file

constexpr int killings = 4;
constexpr unsigned uLongestDelayMs = 200;
// Starting anew comes on top; a lock that was left would last for ever.
constexpr std::chrono::seconds atOnce(2 * SLOWED_DOWN);

// A variable of the environment for one scope.
class CVariable
{
public:
    CVariable(const char* szName, const std::filesystem::path& value) : m_name(tests::Widen(szName))
    {
        m_old.resize(GetEnvironmentVariableW(m_name.c_str(), nullptr, 0));
        GetEnvironmentVariableW(m_name.c_str(), m_old.data(), static_cast<DWORD>(m_old.size()));
        SetEnvironmentVariableW(m_name.c_str(), tests::PlatformNameOf(value).c_str());
    }
    ~CVariable()
    {
        SetEnvironmentVariableW(m_name.c_str(), m_old.empty() ? nullptr : m_old.c_str());
    }
    CVariable(const CVariable&) = delete;
    CVariable& operator=(const CVariable&) = delete;

private:
    CWideString m_name;
    CWideString m_old; // with its terminator
};

// Numbers its lines, and tells at the end how many there were.
template <class Condition>
void WriteWhile(const char* szWriter, Condition condition)
{
    const CWideString name = tests::Widen(szWriter);
    unsigned uLines = 0;
    for (; condition(); ++uLines)
        IhvuiTrace(traceLevelInfo, OLESTR("%s line %u\n"), name.c_str(), uLines);
    IhvuiTrace(traceLevelInfo, OLESTR("%s end %u\n"), name.c_str(), uLines);
}

bool IsToWrite()
{
    return !std::filesystem::exists(std::getenv(szStopVariable));
}

TEST(KilledLogWriter, DISABLED_Survivor)
{
    const tests::COtherLogWriter writer;
    WriteWhile("survivor", IsToWrite);
}

TEST(KilledLogWriter, DISABLED_Victim)
{
    const tests::COtherLogWriter writer;
    WriteWhile("victim", IsToWrite);
}

TEST(KilledLogWriter, DISABLED_Latecomer)
{
    const tests::COtherLogWriter writer;
    const auto begin = Clock::now();
    WriteWhile("latecomer", [nLeft = 1]() mutable { return nLeft-- > 0; });
    EXPECT_GT(atOnce, Clock::now() - begin);
}

// What the log holds beside whole lines, and each writer's lines as they follow one another.
struct Reading
{
    std::vector<std::string> pieces;
    std::map<std::string, unsigned> lines;
    std::map<std::string, unsigned> ends; // how many lines the writer says it wrote
};

Reading Read(const std::string& strLog)
{
    static const std::regex form(R"([\d:.]{12} \[[ 0-9A-F]{8}\]   Ihvui: (\w+) (line|end) (\d+)\r\n)");
    Reading reading;
    std::size_t nRead = 0;
    for (std::sregex_iterator it(strLog.begin(), strLog.end(), form), end; it != end; ++it)
    {
        const auto& match = *it;
        if (match.prefix().length() != 0)
            reading.pieces.push_back(match.prefix());
        nRead = static_cast<std::size_t>(match.position() + match.length());
        const auto uNumber = static_cast<unsigned>(std::stoul(match[3]));
        if (match[2] == "end")
            reading.ends[match[1]] = uNumber;
        else
            EXPECT_EQ(reading.lines[match[1]]++, uNumber) << match.str();
    }
    if (nRead != strLog.size())
        reading.pieces.push_back(strLog.substr(nRead));
    return reading;
}

void KillOneOf(std::chrono::milliseconds delay)
{
    const tests::CTraceLog log;
    const tests::CTestFolder folder;
    const auto stop = folder.Path() / "stop";
    const CVariable logVariable(tests::szLogVariable, log.File());
    const CVariable stopVariable(szStopVariable, stop);
    // What the killed process would have taken away at its end goes with this folder.
    const CVariable nativeFolder("TMPDIR", folder.Path());
    const CVariable windowsFolder("TMP", folder.Path());
    KorCmnTracer::Start(OLESTR("unused"), false, true);
    std::jthread own([](const std::stop_token& toEnd) { WriteWhile("parent", [&] { return !toEnd.stop_requested(); }); });
    tests::CStartedCase survivor(tests::ProgramFile(), survivorCase);
    tests::CStartedCase victim(tests::ProgramFile(), victimCase);
    EXPECT_TRUE(tests::WaitForLine(log.File(), "survivor line "));
    EXPECT_TRUE(tests::WaitForLine(log.File(), "victim line "));
    std::this_thread::sleep_for(delay);
    victim.Kill();

    tests::CStartedCase latecomer(tests::ProgramFile(), latecomerCase);
    EXPECT_TRUE(latecomer.HasPassedWithin(tests::longestWait)) << "a lock is left";
    tests::WriteBytes(stop, "stop");
    EXPECT_TRUE(survivor.HasPassedWithin(tests::longestWait));
    own.request_stop();
    own.join();
    KorCmnTracer::Stop();

    Reading reading = Read(log.Bytes());
    for (const char* szWriter : {"parent", "survivor", "latecomer"})
    {
        EXPECT_EQ(1u, reading.ends.count(szWriter)) << szWriter;
        EXPECT_EQ(reading.ends[szWriter], reading.lines[szWriter]) << szWriter;
    }
    EXPECT_EQ(0u, reading.ends.count("victim"));
    // A line is written before its end: at most the victim's last one has none.
    EXPECT_GE(1u, reading.pieces.size());
    const std::regex piece(R"([\d:.]{12} \[[ 0-9A-F]{8}\]   Ihvui: victim line )" + std::to_string(reading.lines["victim"]));
    for (const std::string& strPiece : reading.pieces)
        EXPECT_TRUE(std::regex_match(strPiece, piece)) << strPiece;
}

TEST(KilledLogWriter, TheOthersLoseNothingAndWaitForNobody)
{
    const auto uSeed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(uSeed));
    std::minstd_rand random(uSeed);
    std::uniform_int_distribution<int> delay(0, uLongestDelayMs);
    for (int i = 0; i < killings && !HasFailure(); ++i)
        KillOneOf(std::chrono::milliseconds(delay(random)));
}
} // namespace
