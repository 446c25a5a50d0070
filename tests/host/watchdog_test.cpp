// The end of a program that would wait for ever.
#include "host/Watchdog.h"
#include "tests/support/TestProgram.h"

#include <windows.h>

#include <gtest/gtest.h>

namespace
{
constexpr DWORD muchLongerMs = 20000;

// Runs in a process of its own, which it must not survive.
TEST(WatchdogTest, DISABLED_WaitsForEver)
{
    const CWatchdog watchdog(std::chrono::seconds(1));
    Sleep(muchLongerMs);
}

TEST(WatchdogTest, EndsTheProgramInTime)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(tests::RunCase(tests::ProgramFile(), "WatchdogTest.DISABLED_WaitsForEver"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(muchLongerMs));
}

TEST(WatchdogTest, LeavesAProgramAloneThatIsDone)
{
    {
        const CWatchdog watchdog(std::chrono::seconds(1));
    }
    Sleep(1500);
}
} // namespace
