// One line of the trace log: its bytes in the file, its levels, its echo.
#include "tests/support/TestProgram.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

#include <cstdio>
#include <regex>

namespace
{
using tests::CRegistryValue;
using tests::CTraceLog;

constexpr std::size_t cchPrefix = 33; // "12:34:56.789 [     A3C]   Ihvui: "

// The log written by the program's own tracer, for as long as the object lives.
class CStartedLog : public CTraceLog
{
public:
    explicit CStartedLog(bool bConsoleEcho = false)
    {
        KorCmnTracer::Start(OLESTR("unused"), bConsoleEcho, false);
    }
    ~CStartedLog()
    {
        KorCmnTracer::Stop();
    }
};

std::string Xs(std::size_t count)
{
    return std::string(count, 'x');
}

TEST(LogLine, StoredBytes)
{
    const struct
    {
        const char* name;
        std::string message;
        std::string stored;
    } rows[] = {
        {"final_line_feed_is_widened", "GetClassObject\n", "GetClassObject\r\n"},
        {"leading_and_inner_line_feeds_stay_bare", "\none\ntwo\n", "\none\ntwo\r\n"},
        {"without_line_feed", "no end", "no end"},
        {"only_a_line_feed", "\n", "\r\n"},
        {"empty", "", ""},
        {"one_of_two_final_line_feeds_is_widened", "x\n\n", "x\n\r\n"},
        {"2000_characters_are_kept", Xs(1966) + "\n", Xs(1966) + "\r\n"},
        {"2000_characters_without_line_feed_are_kept", Xs(1967), Xs(1967)},
        {"2001_characters_are_cut", Xs(1967) + "\n", Xs(1963) + "...\r\n"},
        {"4095_characters_are_cut", Xs(4095), Xs(1963) + "...\r\n"},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const CStartedLog log;
        IhvuiTrace(traceLevelInfo, OLESTR("%s"), tests::Widen(row.message).c_str());
        const auto bytes = log.Bytes();
        ASSERT_LE(cchPrefix, bytes.size());
        EXPECT_EQ("   Ihvui: ", bytes.substr(cchPrefix - 10, 10));
        EXPECT_EQ(row.stored, bytes.substr(cchPrefix));
    }
}

TEST(LogLine, NextMessageContinuesALineWithoutEnd)
{
    const CStartedLog log;
    IhvuiTrace(traceLevelInfo, OLESTR("first"));
    IhvuiTrace(traceLevelInfo, OLESTR("%s"), OLESTR("\x4E2D cannot be narrowed\n"));
    IhvuiTrace(traceLevelInfo, OLESTR("second\n"));
    EXPECT_TRUE(std::regex_match(log.Bytes(), std::regex(R"([^\r\n]{33}first[^\r\n]{33}second\r\n)"))) << log.Bytes();
}

TEST(LogLine, TimeAndThread)
{
    const auto now = []
    {
        SYSTEMTIME time = {};
        GetLocalTime(&time);
        char szTime[40];
        std::snprintf(szTime, sizeof(szTime), "%02d:%02d:%02d.%03d", time.wHour, time.wMinute, time.wSecond, time.wMilliseconds);
        return std::string(szTime);
    };
    const CStartedLog log;
    const auto before = now();
    IhvuiTrace(traceLevelInfo, OLESTR("x\n"));
    const auto after = now();
    const auto bytes = log.Bytes();
    char szThread[40];
    std::snprintf(szThread, sizeof(szThread), " [%8lX]   Ihvui: x\r\n", static_cast<unsigned long>(GetCurrentThreadId()));
    EXPECT_EQ(szThread, bytes.substr(std::min<std::size_t>(12, bytes.size())));
    if (before <= after) // not over midnight
    {
        EXPECT_LE(before, bytes.substr(0, 12));
        EXPECT_GE(after, bytes.substr(0, 12));
    }
}

TEST(LogLine, LevelsDecideWhatIsWritten)
{
    const struct
    {
        const char* name;
        std::vector<LONG> configured; // none or one
        std::vector<LONG> written;
    } rows[] = {
        {"absent", {}, {-1, 0, 1, 2}}, {"two", {2}, {-1, 0, 1, 2}}, {"one", {1}, {-1, 0, 1}},
        {"zero", {0}, {-1, 0}},        {"negative", {-1}, {-1}},    {"three", {3}, {-1, 0, 1, 2, 3}},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        std::vector<CRegistryValue> values;
        for (const LONG lLevel : row.configured)
            values.emplace_back(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("Ihvui"), static_cast<DWORD>(lLevel));
        CStartedLog log;
        std::vector<std::string> expected;
        for (const LONG lLevel : {-1, 0, 1, 2, 3})
            IhvuiTrace(lLevel, OLESTR("%d\n"), lLevel);
        for (const LONG lLevel : row.written)
            expected.push_back(std::to_string(lLevel) + "\n");
        EXPECT_EQ(expected, log.Take());
    }
}

TEST(LogLine, EachModuleHasItsWordAndItsLevel)
{
    const CRegistryValue ihvs(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("Ihvs"), DWORD{0});
    const CRegistryValue ccx(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("CCXLib"), REG_SZ, {'1', 0, 0, 0, 0, 0});
    const CStartedLog log;
    for (int i = 0; i < KorCmnTracer::moduleCount; ++i)
        KorCmnTracer::WriteLine(1, static_cast<KorCmnTracer::ModuleIndex>(i), OLESTR(";"));
    EXPECT_EQ("Any: ;Ihvui: ;CCXLib: ;IhvsMini: ;", std::regex_replace(log.Bytes(), std::regex(R"([\d:.]{12} \[.{8}\]   )"), ""));
}

TEST(LogLine, EchoHappensWhateverTheSwitchesSay)
{
    for (const DWORD dwEnable : {1u, 0u})
    {
        const CRegistryValue level(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("Ihvui"), DWORD{0});
        CTraceLog log;
        const CRegistryValue enable(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), dwEnable);
        for (const bool bEcho : {true, false})
        {
            KorCmnTracer::Start(OLESTR("unused"), bEcho, false);
            testing::internal::CaptureStdout();
            IhvuiTrace(traceLevelInfo, OLESTR("shown\n"));
            IhvuiTrace(traceLevelInfo, OLESTR("%s"), tests::Widen(Xs(3000)).c_str());
            const auto shown = testing::internal::GetCapturedStdout();
            KorCmnTracer::Stop();
            const std::regex expected(bEcho ? R"(.{12} \[.{8}\]   Ihvui: shown\n\n.{12} \[.{8}\]   Ihvui: x{1963}\.\.\.\n\n)"
                                            : "");
            EXPECT_TRUE(std::regex_match(shown, expected)) << "switch " << dwEnable << " echo " << bEcho << "\n" << shown;
        }
        EXPECT_EQ("", log.Bytes());
    }
}

TEST(LogLine, NothingIsWrittenBeforeTheStart)
{
    IhvuiTrace(traceLevelError, OLESTR("too early\n"));
    const auto program = tests::ProgramFile();
    EXPECT_FALSE(std::filesystem::exists(program.parent_path() / (program.stem().string() + "Log.txt")));
}
} // namespace
