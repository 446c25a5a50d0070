// Two processes with four threads each write to one log.
#include "tests/support/TestProgram.h"
#include "tests/support/TraceLog.h"
#include "tests/trace/OtherLogWriter.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

#include <cstdlib>
#include <fstream>
#include <map>
#include <regex>
#include <thread>

namespace
{
constexpr unsigned uWriters = 4;
constexpr unsigned uLines = 2000 / SLOWED_DOWN; // of each of them
constexpr auto secondProcess = "LogWriters.DISABLED_SecondProcess";

// The process's share: writer uWriter of it numbers its lines. In the middle of them each writer does what is asked.
template <class InTheMiddle>
void Write(DWORD dwProcess, const InTheMiddle& inTheMiddle)
{
    std::vector<std::jthread> threads;
    for (unsigned uWriter = 0; uWriter < uWriters; ++uWriter)
        threads.emplace_back(
            [=]
            {
                for (unsigned uLine = 0; uLine < uLines; ++uLine)
                {
                    if (uLine == uLines / 2)
                        inTheMiddle();
                    IhvuiTrace(traceLevelInfo, OLESTR("process %u writer %u line %u\n"), dwProcess, uWriter, uLine);
                }
            });
}

// However late the machine lets the first process go on, the second is not through by then.
void AwaitFirst()
{
    EXPECT_TRUE(tests::WaitForLine(std::getenv(tests::szLogVariable), "process 1 "));
}

TEST(LogWriters, DISABLED_SecondProcess)
{
    ASSERT_NE(nullptr, std::getenv(tests::szLogVariable));
    const tests::COtherLogWriter writer;
    Write(2, AwaitFirst);
}

TEST(LogWriters, NoLineIsLostOrTorn)
{
    const tests::CTraceLog log;
    const auto variable = tests::Widen(tests::szLogVariable);
    SetEnvironmentVariableW(variable.c_str(), tests::PlatformNameOf(log.File()).c_str());
    KorCmnTracer::Start(OLESTR("unused"), false, false);
    bool bPassed = false;
    {
        const std::jthread second([&] { bPassed = tests::RunCase(tests::ProgramFile(), secondProcess); });
        EXPECT_TRUE(tests::WaitForLine(log.File(), "process 2 ")) << "the second process does not write";
        Write(1, [] {});
    }
    KorCmnTracer::Stop();
    EXPECT_TRUE(bPassed);

    // Every writer's lines are there, whole and in its order, each writer with a thread of its own.
    static const std::regex form(R"([\d:.]{12} \[([ 0-9A-F]{8})\]   Ihvui: (process [12] writer [0-3]) line (\d+)\r)");
    std::map<std::string, unsigned> next;
    std::map<std::string, std::string> threadOf;
    std::string line;
    unsigned uSwitches = 0;
    std::string previous;
    for (std::ifstream file(log.File(), std::ios::binary); std::getline(file, line);)
    {
        std::smatch match;
        ASSERT_TRUE(std::regex_match(line, match, form)) << line;
        ASSERT_EQ(next[match[2]]++, static_cast<unsigned>(std::stoul(match[3]))) << line;
        ASSERT_EQ(match[1], threadOf.emplace(match[2], match[1]).first->second) << line;
        uSwitches += match[2].str().substr(0, 9) != previous;
        previous = match[2].str().substr(0, 9);
    }
    EXPECT_EQ(2 * uWriters, next.size());
    for (const auto& [writer, uNext] : next)
        EXPECT_EQ(uLines, uNext) << writer;
    EXPECT_LT(2u, uSwitches) << "the processes wrote one after the other";
}
} // namespace
