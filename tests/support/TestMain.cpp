// Prepares the process before any case runs: a root of its own for the stand-in's state, and no drawing of dialogs.
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const tests::CTestFolder stateFolder;
    // Both are the stand-in's; the real platform does not look at them.
    SetEnvironmentVariableW(OLESTR("PLATFORM_ROOT"), stateFolder.PlatformName().c_str());
    SetEnvironmentVariableW(OLESTR("PLATFORM_DIALOGS"), OLESTR("none"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
