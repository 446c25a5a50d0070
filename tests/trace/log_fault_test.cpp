// The trace log when the platform fails it: it goes quiet, and nobody else is disturbed.
#include "platform/testing/Faults.h"
#include "tests/support/Pattern.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

#include <set>
#include <thread>

#include <sys/stat.h>

namespace
{
using platform::testing::CFailNth;
using tests::CRegistryValue;
using Lines = std::vector<std::string>;

// Three lines, and the calls that fail from the start on.
TEST(LogFaults, CostALineOrTheLog)
{
    const Lines all = {"one\n", "two\n", "three\n"};
    const struct
    {
        const char* szFunction;
        unsigned uFirst, uCount;
        DWORD dwError;
        Lines written;
    } rows[] = {
        {"_wfopen", 1, 1, ERROR_ACCESS_DENIED, {}},
        {"_wfopen", 1, 1, ERROR_PATH_NOT_FOUND, all}, // the second try
        {"CreateFileW", 1, 1, 0, {}},
        {"CreateMutexW", 1, 1, 0, {}},
        {"WaitForSingleObject", 2, 1, 0, {"one\n"}},
        {"LockFileEx", 2, 1, 0, {"one\n"}},
        {"GetFileSize", 2, 1, 0, {"one\n"}},
        {"SetFilePointer", 2, 1, 0, {"one\n", "three\n"}},
        {"WriteFile", 2, 1, 0, {"one\n", "three\n"}},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.szFunction);
        tests::CTraceLog log;
        platform::testing::PlanFault(row.szFunction, row.uFirst, row.uCount, row.dwError);
        KorCmnTracer::Start(OLESTR("unused"), false, false);
        for (const auto& line : all)
            IhvuiTrace(traceLevelError, OLESTR("%s"), tests::Widen(line).c_str());
        EXPECT_EQ(row.uCount, platform::testing::CountFaults(row.szFunction));
        platform::testing::ClearFaults();
        KorCmnTracer::Stop();
        EXPECT_EQ(row.written, log.Take());
    }
}

// Whichever reading fails, its own default takes its place and the other switches keep theirs.
TEST(LogFaults, ReadingTheSwitches)
{
    for (const char* szFunction : {"RegOpenKeyExW", "RegQueryValueExW"})
    {
        std::set<std::string> outcomes;
        bool bFired = true;
        for (unsigned uCall = 1; bFired && uCall < 100; ++uCall)
        {
            // Without the switch the state is that of the start before.
            KorCmnTracer::Start(OLESTR(""), false, false);
            const tests::CTestFolder folder;
            tests::CTraceLog log;
            const CRegistryValue level(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("Ihvui"), 1);
            const CFailNth fault(szFunction, uCall, ERROR_ACCESS_DENIED);
            KorCmnTracer::Start(folder.PlatformName(OLESTR("given.txt")).c_str(), false, false);
            IhvuiTrace(traceLevelError, OLESTR("1"));
            IhvuiTrace(traceLevelInfo, OLESTR("2"));
            KorCmnTracer::Stop();
            bFired = fault.HasFired();
            const auto given = tests::ReadBytes(folder.Path() / "given.txt");
            std::string outcome = given.empty() ? "configured" : "given " + given.substr(33);
            for (const auto& line : log.Take())
                outcome += " " + line;
            outcomes.insert(outcome);
        }
        EXPECT_EQ((std::set<std::string>{"configured", "configured 1", "configured 1 2", "given 1"}), outcomes) << szFunction;
    }
}

// Until the system tells of somebody who waits for a lock of the file. Windows does not tell, and knows no such numbers.
void AwaitWaiter(const std::filesystem::path& file)
{
    struct stat status = {};
    ASSERT_EQ(0, stat(file.string().c_str(), &status));
    const std::string waiter = "-> .*:" + std::to_string(status.st_ino) + " ";
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60 * SLOWED_DOWN);
    while (status.st_ino != 0 && tests::Found(tests::ReadBytes("/proc/locks"), waiter).empty())
    {
        ASSERT_LT(std::chrono::steady_clock::now(), end) << "the writer does not wait for the lock";
        std::this_thread::yield();
    }
}

// All writers of the log, in whatever process, lock its first two bytes for one line.
TEST(LogFaults, WritersWaitForTheFirstTwoBytesAlone)
{
    const struct
    {
        DWORD dwOffset;
        DWORD cbHeld;
        bool bWaits;
    } rows[] = {{0, 1, true}, {1, 1, true}, {2, 9, false}};
    for (const auto& row : rows)
    {
        const tests::CTraceLog log;
        tests::WriteBytes(log.File(), "what was before\n");
        KorCmnTracer::Start(OLESTR("unused"), false, false);
        auto another = log.HeldByAnother(row.dwOffset, row.cbHeld);
        EXPECT_TRUE(another);
        std::thread writer([] { IhvuiTrace(traceLevelError, OLESTR("x\n")); });
        if (row.bWaits)
        {
            AwaitWaiter(log.File());
            // The writer looks for the end when it has the lock, and so finds it behind this.
            SetFilePointer(another.Get(), 0, nullptr, FILE_END);
            DWORD cbWritten = 0;
            EXPECT_TRUE(WriteFile(another.Get(), "held\n", 5, &cbWritten, nullptr));
            another.Reset();
        }
        writer.join();
        const std::string expected = std::string("what was before\n") + (row.bWaits ? "held\n" : "");
        EXPECT_EQ(expected.size() + 36, log.Bytes().size());
        EXPECT_TRUE(log.Bytes().starts_with(expected)) << log.Bytes();
        KorCmnTracer::Stop();
    }
}

// The mutex is the tracer's own; an explicit instantiation may name it all the same.
template <CUniqueMutex* pMutex>
struct CMutexOf
{
    friend HANDLE TracersMutex()
    {
        return pMutex->Get();
    }
};
template struct CMutexOf<&KorCmnTracer::s_lock>;
HANDLE TracersMutex();

TEST(LogFaults, AnAbandonedMutexCostsOneLine)
{
    tests::CTraceLog log;
    KorCmnTracer::Start(OLESTR("unused"), false, false);
    std::thread([] { WaitForSingleObject(TracersMutex(), INFINITE); }).join();
    IhvuiTrace(traceLevelError, OLESTR("lost\n"));
    std::thread([] { IhvuiTrace(traceLevelError, OLESTR("next\n")); }).join();
    IhvuiTrace(traceLevelError, OLESTR("own\n"));
    EXPECT_EQ((Lines{"next\n", "own\n"}), log.Take());
    KorCmnTracer::Stop();
}
} // namespace
