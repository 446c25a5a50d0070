// Which of the module's lines are errors: with the level of its module word set to 1 exactly those are written.
#include "tests/module/Operation.h"

namespace
{
using namespace tests::walk;
using Lines = std::vector<std::string>;

// What every operation traces, among them operations that are refused, profiles that are invalid and a machine without
// the maker's adapter.
Lines TracedAtLevel(DWORD dwLevel)
{
    const tests::CRegistryValue level(HKEY_LOCAL_MACHINE, tests::szTraceLevelsKey, OLESTR("Ihvui"), dwLevel);
    CWorld world;
    world.Load();
    world.log.Take();
    for (const auto& operation : AllOperations())
    {
        if (!operation.bLoads)
            operation.Outcome(world);
    }
    world.Unload();
    world.service.SetAdapters("[]");
    for (const auto& operation : DialogOperations())
    {
        if (operation.bLoads)
            operation.Outcome(world);
    }
    return world.log.Take();
}

TEST(TraceLevels, LevelOneIsThatOfErrors)
{
    Lines errors = TracedAtLevel(2);
    const auto nLines = errors.size();
    std::erase_if(errors, [](const std::string& line) { return !line.starts_with("***") && !line.starts_with("Didnt find"); });
    EXPECT_LT(errors.size(), nLines);
    EXPECT_EQ("Didnt find korvane interface\n", errors.back());
    EXPECT_EQ(errors, TracedAtLevel(1));
    EXPECT_EQ(Lines(), TracedAtLevel(0));
}
} // namespace
