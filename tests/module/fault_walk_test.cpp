// Every platform function fails at every call in every public operation, and so does every allocation of the language's.
#include "tests/module/Operation.h"
#include "tests/support/PlatformFunctions.h"

#include <set>

namespace
{
using namespace tests::walk;
using Names = std::vector<std::string_view>;

Names AllFunctions()
{
    Names functions = tests::FailingImports();
    functions.insert(functions.end(), std::begin(tests::documentOperations), std::end(tests::documentOperations));
    return functions;
}

// A function that no operation calls would be walked without ever failing.
TEST(FaultWalk, EachFunctionIsCalledSomewhere)
{
    constexpr unsigned never = 0xFFFFFFFF;
    CWorld world;
    const Names functions = AllFunctions();
    std::set<std::string_view> uncalled(functions.begin(), functions.end());
    // A folder without a language file, so that the search for one goes all its way.
    const tests::CTestFolder elsewhere;
    ASSERT_TRUE(SetCurrentDirectoryW(elsewhere.PlatformName().c_str()));
    testing::internal::CaptureStdout();
    for (const auto& operation : AllOperations())
    {
        if (operation.Loads())
            world.Unload();
        else if (!world.IsLoaded())
            world.Load();
        for (const auto name : uncalled)
            platform::testing::PlanFault(name.data(), never, 1);
        operation.run(world, nullptr);
        std::erase_if(uncalled,
                      [&](std::string_view name) {
                          return platform::testing::CountCalls(name.data()) != 0 || world.Service().CountCalls(name.data()) != 0;
                      });
        platform::testing::ClearFaults();
    }
    testing::internal::GetCapturedStdout();
    for (const auto name : uncalled)
        ADD_FAILURE() << name << " is not called";
    SetCurrentDirectoryW(tests::PlatformNameOf(tests::BuildFolder()).c_str());
}

// The operations that share a process: a dialog takes its time.
struct Group
{
    std::string name;
    std::span<const Operation> operations;
};
void PrintTo(const Group& group, std::ostream* pOut)
{
    *pOut << group.name;
}

std::vector<Group> Groups()
{
    std::vector<Group> groups = {{"module", ModuleOperations()}, {"properties", PropertyOperations()}};
    for (const auto& dialog : DialogOperations())
        groups.push_back({std::string(dialog.name), {&dialog, 1}});
    return groups;
}

class FaultWalkOf : public testing::TestWithParam<Group>
{
};
TEST_P(FaultWalkOf, Functions)
{
    Walk(GetParam().operations, AllFunctions());
}
TEST_P(FaultWalkOf, Allocations)
{
    Walk(GetParam().operations, {operatorNew});
}
INSTANTIATE_TEST_SUITE_P(Each, FaultWalkOf, testing::ValuesIn(Groups()), [](const auto& row) { return row.param.name; });
} // namespace
