// The end of a program that would wait for ever.
#include "host/Watchdog.h"
#include "tests/support/EnvironmentVariable.h"
#include "tests/support/TestProgram.h"

#include <gtest/gtest.h>

#include <semaphore>

namespace
{
// Runs in a process of its own, which it must not survive.
TEST(WatchdogTest, DISABLED_WaitsForEver)
{
    const CWatchdog watchdog(std::chrono::seconds(0));
    std::binary_semaphore never(0);
    never.acquire();
}

TEST(WatchdogTest, EndsTheProgramAndSaysWhy)
{
    const tests::CTestFolder folder;
    // What the program would have taken away at its end goes with this folder.
    const tests::CEnvironmentVariable nativeFolder("TMPDIR", folder.Path());
    const tests::CEnvironmentVariable windowsFolder("TMP", folder.Path());
    const auto run = tests::RunProgram("korihvui_tests",
                                       {"--gtest_also_run_disabled_tests", "--gtest_filter=WatchdogTest.DISABLED_WaitsForEver"});
    EXPECT_EQ(1, run.nExitCode);
    EXPECT_NE(std::string::npos, run.strErrors.find("korihost: no end within 0 seconds")) << run.strErrors;
}
} // namespace
