// Many operations of each kind in one process: what the process holds stays as it was. KORIHVUI_SOAK says how many
// (100000 for a long run); by default it is a small slice. KORIHVUI_SOAK_QUIET leaves out the lines of the log, which take
// most of the time where several processes could write to it.
#include "tests/module/Operation.h"
#include "tests/support/Machine.h"
#include "tests/support/TraceLog.h"

#include <cstdlib>
#include <iostream>
#include <optional>

namespace
{
using namespace tests::walk;
using tests::CRegistryValue;
using tests::szTraceLevelsKey;

constexpr unsigned slice = 300;
constexpr unsigned slowSlice = 10;

unsigned Repetitions(bool bSlow)
{
    const char* const szCount = std::getenv("KORIHVUI_SOAK");
    const auto uCount = szCount ? static_cast<unsigned>(std::strtoul(szCount, nullptr, 10)) : 0;
    return uCount != 0 ? uCount : bSlow ? slowSlice : slice;
}

class Soak : public testing::TestWithParam<Operation>
{
};

TEST_P(Soak, LeavesTheProcessAsItWas)
{
    const auto& operation = GetParam();
    std::optional<CRegistryValue> quiet;
    if (std::getenv("KORIHVUI_SOAK_QUIET"))
        quiet.emplace(HKEY_LOCAL_MACHINE, szTraceLevelsKey, OLESTR("Ihvui"), 0);
    CWorld world;
    operation.Prepare(world);
    testing::internal::CaptureStdout();
    const unsigned uCount = Repetitions(IsSlow(operation));
    const auto usual = operation.Outcome(world);
    // The process's own stores grow at first, however little is left behind later.
    for (unsigned u = 0; u < uCount / 10 + 5; ++u)
        operation.Outcome(world);
    const auto before = tests::MeasureResources();
    const auto aliveBefore = world.CountAlive();
    unsigned uUnusual = 0;
    for (unsigned u = 0; u < uCount; ++u)
        uUnusual += operation.Outcome(world) == usual ? 0 : 1;
    const auto after = tests::MeasureResources();
    auto aliveAfter = world.CountAlive();
    testing::internal::GetCapturedStdout();

    EXPECT_EQ(0u, uUnusual);
    std::size_t cbKept = 0;
    if (operation.bLoads && IsDialog(operation))
    {
        // The one handle that each life of the module leaves to the process.
        constexpr std::size_t cbHandle = 256;
        cbKept = uCount * cbHandle;
        EXPECT_EQ(aliveBefore.lServiceHandles + static_cast<LONG>(uCount), aliveAfter.lServiceHandles);
        aliveAfter.lServiceHandles = aliveBefore.lServiceHandles;
    }
    EXPECT_EQ(aliveBefore, aliveAfter);
    constexpr std::size_t nHandlesOfOthers = 4; // threads of the system come and go
    EXPECT_NE(0u, before.nHandles);
    EXPECT_LE(after.nHandles, before.nHandles + nHandlesOfOthers);
    // Below what ten lives of the module would lose if one of them lost what its run-time sets aside.
    constexpr std::size_t cbSpread = std::size_t{1} << 18;
    EXPECT_LE(after.cbMemory, before.cbMemory + cbKept + cbSpread);
    std::cout << uCount << " times: handles " << before.nHandles << " to " << after.nHandles << ", memory "
              << before.cbMemory / 1024 << " to " << after.cbMemory / 1024 << " KiB\n";
}

INSTANTIATE_TEST_SUITE_P(Each, Soak, testing::ValuesIn(AllOperations()),
                         [](const auto& row) { return std::string(row.param.szName); });
} // namespace
