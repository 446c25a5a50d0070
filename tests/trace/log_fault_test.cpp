// The trace log when the platform fails it: it goes quiet, and nobody else is disturbed.
#include "platform/testing/Faults.h"
#include "tests/support/LiveObjects.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

#include <regex>
#include <set>
#include <thread>

#include <sys/stat.h>

namespace
{
using platform::testing::CFailNth;
using tests::CRegistryValue;
using Lines = std::vector<std::string>;

// The log's file as another program opens it.
CUniqueFile OpenByAnother(const tests::CTraceLog& log)
{
    return CUniqueFile(CreateFileW(tests::PlatformNameOf(log.File()).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool Lock(const CUniqueFile& file, DWORD dwOffset, DWORD cbLock)
{
    OVERLAPPED region = {};
    region.Offset = dwOffset;
    return LockFileEx(file.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, cbLock, 0, &region) != FALSE;
}

TEST(LogFaults, WhileWriting)
{
    const struct
    {
        const char* szFunction;
        unsigned uCalls; // that fail
        bool bDisables;
    } rows[] = {
        {"WaitForSingleObject", 1, true}, {"LockFileEx", 1, true}, {"GetFileSize", 1, true},
        {"SetFilePointer", 1, false},     {"WriteFile", 2, false}, // the text and its line end
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.szFunction);
        tests::CTraceLog log;
        const auto live = tests::LiveObjects();
        KorCmnTracer::Start(OLESTR("unused"), false, false);
        IhvuiTrace(traceLevelError, OLESTR("before\n"));
        platform::testing::PlanFault(row.szFunction, 1, row.uCalls);
        IhvuiTrace(traceLevelError, OLESTR("lost\n"));
        EXPECT_EQ(row.uCalls, platform::testing::CountFaults(row.szFunction));
        platform::testing::ClearFaults();
        IhvuiTrace(traceLevelError, OLESTR("after\n"));
        EXPECT_EQ(row.bDisables ? Lines{"before\n"} : (Lines{"before\n", "after\n"}), log.Take());
        EXPECT_TRUE(Lock(OpenByAnother(log), 0, 2)) << "the log's lock is still held";
        KorCmnTracer::Stop();
        EXPECT_EQ(live, tests::LiveObjects());
    }
}

TEST(LogFaults, WhileStarting)
{
    const struct
    {
        const char* name;
        const char* szFunction;
        DWORD dwError;
        bool bOn;
    } rows[] = {
        {"no_handle", "CreateFileW", ERROR_SHARING_VIOLATION, false},
        {"no_mutex", "CreateMutexW", ERROR_NOT_ENOUGH_MEMORY, false},
        {"not_created", "_wfopen", ERROR_ACCESS_DENIED, false},
        {"created_at_the_second_try", "_wfopen", ERROR_PATH_NOT_FOUND, true},
        {"seems_missing", "_waccess", ERROR_FILE_NOT_FOUND, true},
        {"no_backup", "MoveFileW", ERROR_ACCESS_DENIED, true},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        tests::CTraceLog log;
        const auto live = tests::LiveObjects();
        const CFailNth fault(row.szFunction, 1, row.dwError);
        KorCmnTracer::Start(OLESTR("unused"), false, false);
        IhvuiTrace(traceLevelError, OLESTR("x\n"));
        KorCmnTracer::Stop();
        EXPECT_TRUE(fault.HasFired());
        EXPECT_EQ(row.bOn ? Lines{"x\n"} : Lines{}, log.Take());
        EXPECT_EQ(live, tests::LiveObjects());
    }
}

// Whichever reading fails, its own default takes its place and the other switches keep theirs.
TEST(LogFaults, ReadingTheSwitches)
{
    const auto off = [] { return CRegistryValue(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), DWORD{0}); };
    for (const char* szFunction : {"RegOpenKeyExW", "RegQueryValueExW"})
    {
        SCOPED_TRACE(szFunction);
        std::set<std::string> outcomes;
        bool bFired = true;
        for (unsigned uCall = 1; bFired && uCall < 100; ++uCall)
        {
            {
                // A failed reading keeps the state of the start before.
                const auto value = off();
                KorCmnTracer::Start(OLESTR("unused"), false, false);
            }
            tests::CTraceLog log;
            const CRegistryValue level(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("Ihvui"), 1);
            const tests::CTestFolder folder;
            const auto live = tests::LiveObjects();
            const CFailNth fault(szFunction, uCall, ERROR_ACCESS_DENIED);
            KorCmnTracer::Start(folder.PlatformName(OLESTR("given.txt")).c_str(), false, false);
            IhvuiTrace(traceLevelError, OLESTR("1"));
            IhvuiTrace(traceLevelInfo, OLESTR("2"));
            KorCmnTracer::Stop();
            bFired = fault.HasFired();
            EXPECT_EQ(live, tests::LiveObjects());
            std::string outcome = std::filesystem::exists(log.File()) ? "configured" : "";
            for (const auto& line : log.Take())
                outcome += " " + line;
            const auto given = tests::ReadBytes(folder.Path() / "given.txt");
            outcomes.insert(outcome + (given.empty() ? "" : "given " + given.substr(33)));
        }
        EXPECT_EQ((std::set<std::string>{"", "configured 1", "configured 1 2", "given 1"}), outcomes);
    }
}

// Until the system tells of somebody who waits for a lock of the file. Windows does not tell, and knows no such numbers.
void AwaitWaiter(const std::filesystem::path& file)
{
    struct stat status = {};
    ASSERT_EQ(0, stat(file.string().c_str(), &status));
    const std::regex waiter("-> .*:" + std::to_string(status.st_ino) + " ");
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60 * SLOWED_DOWN);
    while (status.st_ino != 0 && !std::regex_search(tests::ReadBytes("/proc/locks"), waiter))
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
        auto another = OpenByAnother(log);
        EXPECT_TRUE(Lock(another, row.dwOffset, row.cbHeld));
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
