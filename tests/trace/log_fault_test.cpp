// The trace log when the platform fails it: it goes quiet, and nobody else is disturbed.
#include "platform/testing/Faults.h"
#include "tests/support/LiveObjects.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"
#include "trace/IhvuiTrace.h"
#include "trace/KorCmnTracer.h"

#include <map>

namespace
{
using platform::testing::CFailNth;
using tests::CModuleUnderTest;
using tests::CRegistryValue;
using Lines = std::vector<std::string>;

TEST(LogFaults, WhileWriting)
{
    const struct
    {
        const char* szFunction;
        unsigned uCalls; // that fail
        bool bDisables;
    } rows[] = {
        {"WaitForSingleObject", 1, true},
        {"LockFileEx", 1, true},
        {"GetFileSize", 1, true},
        {"WriteFile", 2, false}, // the text and its line end
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.szFunction);
        tests::CTraceLog log;
        const auto live = tests::LiveObjects();
        {
            const CModuleUnderTest module(CModuleUnderTest::Registration::None);
            const auto request = [&]
            {
                CComRef<IUnknown> factory;
                EXPECT_EQ(S_OK, module.GetClassObject(CLSID_ExtUI, IID_IUnknown, factory.PutVoid()));
            };
            request();
            EXPECT_EQ(Lines{"GetClassObject\n"}, log.Take());

            platform::testing::PlanFault(row.szFunction, 1, row.uCalls);
            testing::internal::CaptureStdout();
            request();
            EXPECT_TRUE(testing::internal::GetCapturedStdout().ends_with("GetClassObject\n\n"));
            EXPECT_EQ(row.uCalls, platform::testing::CountFaults(row.szFunction));
            platform::testing::ClearFaults();
            EXPECT_EQ(Lines{}, log.Take());

            request();
            EXPECT_EQ(row.bDisables ? Lines{} : Lines{"GetClassObject\n"}, log.Take());

            CUniqueFile file(CreateFileW(tests::PlatformNameOf(log.File()).c_str(), GENERIC_WRITE,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                         nullptr));
            OVERLAPPED region = {};
            EXPECT_TRUE(LockFileEx(file.Get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 2, 0, &region))
                << "the log's lock is still held";
        }
        EXPECT_EQ(live, tests::LiveObjects());
    }
}

// Starts the program's own tracer as a module does when it is loaded, and writes one line of each level.
void TraceOnce(const CWideString& given)
{
    KorCmnTracer::Start(given.c_str(), false, false);
    IhvuiTrace(traceLevelError, OLESTR("error\n"));
    IhvuiTrace(traceLevelInfo, OLESTR("info\n"));
    KorCmnTracer::Stop();
}

// A failed reading keeps the state of the start before.
void SwitchOff()
{
    const CRegistryValue enable(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), DWORD{0});
    TraceOnce(OLESTR("unused"));
}

CRegistryValue SwitchOn()
{
    return {HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("EnableTraceLog"), 1};
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
        {"no_old_backup", "DeleteFileW", ERROR_FILE_NOT_FOUND, true},
        {"no_backup", "MoveFileW", ERROR_ACCESS_DENIED, true},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        SwitchOff();
        const auto live = tests::LiveObjects();
        const tests::CTestFolder folder;
        {
            const auto enable = SwitchOn();
            const CFailNth fault(row.szFunction, 1, row.dwError);
            TraceOnce(folder.PlatformName(OLESTR("log.txt")));
            EXPECT_TRUE(fault.HasFired());
        }
        EXPECT_EQ(row.bOn, tests::ReadBytes(folder.Path() / "log.txt").ends_with("info\r\n"));
        EXPECT_EQ(live, tests::LiveObjects());
    }
}

// Whichever reading fails, its own default takes its place and the other switches keep theirs.
TEST(LogFaults, ReadingTheSwitches)
{
    for (const char* szFunction : {"RegOpenKeyExW", "RegQueryValueExW"})
    {
        SCOPED_TRACE(szFunction);
        std::map<std::string, unsigned> outcomes;
        bool bFired = true;
        unsigned uReadings = 0;
        for (; bFired && uReadings < 100; ++uReadings)
        {
            SwitchOff();
            const auto live = tests::LiveObjects();
            const tests::CTestFolder folder;
            {
                const auto enable = SwitchOn();
                const CRegistryValue level(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("Ihvui"), 1);
                const CRegistryValue path(HKEY_LOCAL_MACHINE, tests::szTraceKey, OLESTR("LogPath"),
                                          folder.PlatformName(OLESTR("configured.txt")));
                const auto held = tests::LiveObjects();
                const CFailNth fault(szFunction, uReadings + 1, ERROR_ACCESS_DENIED);
                TraceOnce(folder.PlatformName(OLESTR("given.txt")));
                bFired = fault.HasFired();
                EXPECT_EQ(held, tests::LiveObjects());
            }
            std::string outcome;
            for (const char* szFile : {"configured.txt", "given.txt"})
            {
                const auto bytes = tests::ReadBytes(folder.Path() / szFile);
                if (!bytes.empty())
                    outcome += std::string(szFile) + (bytes.ends_with("info\r\n") ? " with both lines" : " with the error line");
            }
            ++outcomes[outcome];
            EXPECT_EQ(live, tests::LiveObjects());
        }
        // The path, five levels, the switch, and the time when nothing failed.
        const std::map<std::string, unsigned> expected = {
            {"given.txt with the error line", 1},
            {"configured.txt with both lines", 1},
            {"configured.txt with the error line", 5},
            {"", 1},
        };
        EXPECT_EQ(expected, outcomes);
    }
}
} // namespace
