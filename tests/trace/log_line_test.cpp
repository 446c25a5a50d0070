// One line of the trace log: its bytes in the file, its levels, its echo.
#include "platform/testing/Faults.h"
#include "tests/support/Pattern.h"
#include "tests/support/TestProgram.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"
#include "trace/LogLine.h"

#include <cstdio>

#include <unistd.h>

namespace
{
using tests::CRegistryValue;
using tests::CTraceLog;

constexpr std::size_t cchPrefix = 33; // "12:34:56.789 [     A3C]   Ihvui: "
constexpr const char* szPrefix = R"([\d:.]{12} \[[ 0-9A-F]{8}\]   Ihvui: )";

// The log written by the program's own tracer, for as long as the object lives.
class CStartedLog : public CTraceLog
{
public:
    CStartedLog()
    {
        KorCmnTracer::Start(OLESTR("unused"), false, false);
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
        {"2000_characters_are_kept", Xs(1966) + "\n", Xs(1966) + "\r\n"},
        {"2001_characters_are_cut", Xs(1967) + "\n", Xs(1963) + "...\r\n"},
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
    EXPECT_TRUE(tests::Matches(log.Bytes(), R"([^\r\n]{33}first[^\r\n]{33}second\r\n)")) << log.Bytes();
}

TEST(LogLine, TimeAndThread)
{
    const auto now = []
    {
        SYSTEMTIME time = {};
        GetLocalTime(&time);
        char szTime[100];
        std::snprintf(szTime, sizeof(szTime), "%02d:%02d:%02d.%03d [%8lX]   Ihvui: x\r\n", time.wHour, time.wMinute, time.wSecond,
                      time.wMilliseconds, static_cast<unsigned long>(GetCurrentThreadId()));
        return std::string(szTime);
    };
    const CStartedLog log;
    const auto before = now();
    IhvuiTrace(traceLevelInfo, OLESTR("x\n"));
    const auto after = now();
    EXPECT_EQ(after.substr(12), log.Bytes().substr(12));
    EXPECT_TRUE(after < before || (before <= log.Bytes() && log.Bytes() <= after)) << log.Bytes(); // but for midnight
}

TEST(LogLine, EachModuleHasItsWordAndItsLevel)
{
    const WCHAR* const words[] = {OLESTR("Any"), OLESTR("Ihvs"), OLESTR("Ihvui"), OLESTR("CCXLib"), OLESTR("IhvsMini")};
    for (const WCHAR* szConfigured : words)
        for (const LONG lConfigured : {-1, 0, 1, 3})
        {
            const CRegistryValue value(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, szConfigured,
                                       static_cast<DWORD>(lConfigured));
            const CStartedLog log;
            std::string expected;
            for (int i = 0; i < KorCmnTracer::moduleCount; ++i)
                for (const LONG lLevel : {-1, 0, 1, 2, 3})
                {
                    KorCmnTracer::WriteLine(lLevel, static_cast<KorCmnTracer::ModuleIndex>(i), OLESTR(";"));
                    if (lLevel <= (words[i] == szConfigured ? lConfigured : 2))
                        expected += tests::Narrow(words[i]) + ": ;";
                }
            EXPECT_EQ(expected, tests::Replaced(log.Bytes(), R"([\d:.]{12} \[.{8}\]   )", ""));
        }
}

TEST(LogLine, EchoHappensWhateverTheSwitchesSay)
{
    const CRegistryValue level(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("Ihvui"), 0);
    for (const DWORD dwEnable : {1u, 0u})
        for (const bool bEcho : {true, false})
        {
            CTraceLog log;
            const CRegistryValue enable(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), dwEnable);
            KorCmnTracer::Start(OLESTR("unused"), bEcho, false);
            testing::internal::CaptureStdout();
            IhvuiTrace(traceLevelInfo, OLESTR("shown\n"));
            EXPECT_EQ(bEcho, lseek(1, 0, SEEK_CUR) != 0) << "not when the host ends";
            IhvuiTrace(traceLevelInfo, OLESTR("%s"), tests::Widen(Xs(3000)).c_str());
            IhvuiTrace(traceLevelInfo, OLESTR("%s"), OLESTR("\x4E2D\xD83D\xDE00\xFC\n"));
            const auto shown = testing::internal::GetCapturedStdout();
            KorCmnTracer::Stop();
            EXPECT_EQ(bEcho ? "|shown\n\n|" + Xs(1963) + "...\n\n|???\xFC\n\n" : "", tests::Replaced(shown, szPrefix, "|"));
            EXPECT_EQ("", log.Bytes());
        }
}

// Neither in a file beside the program nor on standard output.
TEST(LogLine, NothingIsWrittenBeforeTheStart)
{
    testing::internal::CaptureStdout();
    IhvuiTrace(traceLevelError, OLESTR("too early\n"));
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
    const auto program = tests::ProgramFile();
    EXPECT_FALSE(std::filesystem::exists(program.parent_path() / (program.stem().string() + "Log.txt")));
}

// Only remembered: nothing is written there before a start.
TEST(LogLine, DefaultPathIsTheProgramsOwn)
{
    const auto form = [](std::size_t cchCapacity)
    {
        WCHAR szPath[MAX_PATH + 1] = {};
        FormDefaultLogPath(szPath, cchCapacity);
        return tests::Narrow(szPath);
    };
    const std::string whole = form(MAX_PATH + 1);
    EXPECT_TRUE(whole.ends_with("\\" + tests::ProgramFile().stem().string() + "Log.txt")) << whole;
    EXPECT_EQ(whole, form(whole.size() + 1));
    EXPECT_EQ(whole.substr(0, whole.size() - 1), form(whole.size()));
    const platform::testing::CFailNth fault("GetModuleFileNameW", 1);
    EXPECT_EQ("Log.txt", form(MAX_PATH + 1));
}

// A format as an argument of a template.
template <std::size_t cchFormat>
struct CFormat
{
    // NOLINTNEXTLINE(google-explicit-constructor): a literal is meant to convert.
    consteval CFormat(const WCHAR (&szFormat)[cchFormat])
    {
        std::copy_n(szFormat, cchFormat, szText);
    }
    WCHAR szText[cchFormat] = {};
};
template <CFormat format, class... Arguments>
concept Accepted = requires
{
    typename std::bool_constant<(TraceFormat::CChecked<Arguments...>(format.szText), true)>;
};

TEST(LogLine, FormatIsHeldAgainstItsArguments)
{
    EXPECT_TRUE((Accepted<OLESTR("%s %s %p%u, %d %x %X\n"), WCHAR*, const WCHAR*, void*, DWORD, int, DWORD, DWORD>));
    EXPECT_FALSE((Accepted<OLESTR("%d"), const WCHAR*>));
    EXPECT_FALSE((Accepted<OLESTR("%s"), const char*>));
    EXPECT_FALSE((Accepted<OLESTR("%d"), long long>));
    EXPECT_FALSE((Accepted<OLESTR("%c"), int>));
    EXPECT_FALSE((Accepted<OLESTR("%d %d"), int>));
    EXPECT_FALSE((Accepted<OLESTR("%d"), int, int>));
    EXPECT_FALSE((Accepted<OLESTR("%"), int>));
}
} // namespace
