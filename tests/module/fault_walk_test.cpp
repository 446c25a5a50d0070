// Every platform function fails at every call in every public operation.
#include "platform/testing/Faults.h"
#include "tests/module/Walker.h"

#include <set>

namespace
{
using namespace tests::walk;

std::vector<tests::PlatformFunction> AllFunctions()
{
    std::vector<tests::PlatformFunction> functions(std::begin(tests::platformFunctions), std::end(tests::platformFunctions));
    functions.insert(functions.end(), std::begin(tests::documentOperations), std::end(tests::documentOperations));
    return functions;
}

// A function that no operation calls would be walked without ever failing.
TEST(FaultWalk, EachFunctionIsCalledSomewhere)
{
    constexpr unsigned never = 0xFFFFFFFF;
    CWorld world;
    std::set<std::string_view> uncalled;
    for (const auto& function : AllFunctions())
        uncalled.insert(function.name);
    // A folder without a language file, so that the search for one goes all its way.
    const tests::CTestFolder elsewhere;
    ASSERT_TRUE(SetCurrentDirectoryW(elsewhere.PlatformName().c_str()));
    testing::internal::CaptureStdout();
    for (const auto operations : {ModuleOperations(), ObjectOperations(), PropertyOperations(), DialogOperations()})
        for (const auto& operation : operations)
        {
            if (operation.Loads())
                world.Unload();
            else if (!world.IsLoaded())
                world.Load();
            for (const auto name : uncalled)
                platform::testing::PlanFault(name.data(), never, 1);
            operation.run(world, nullptr);
            std::erase_if(
                uncalled, [&](std::string_view name)
                { return platform::testing::CountCalls(name.data()) != 0 || world.Service().CountCalls(name.data()) != 0; });
            platform::testing::ClearFaults();
        }
    testing::internal::GetCapturedStdout();
    for (const auto name : uncalled)
        ADD_FAILURE() << name << " is not called";
    SetCurrentDirectoryW(tests::PlatformNameOf(tests::BuildFolder()).c_str());
}

TEST(FaultWalk, Module)
{
    Walk(ModuleOperations(), AllFunctions());
}
TEST(FaultWalk, Objects)
{
    Walk(ObjectOperations(), AllFunctions());
}
TEST(FaultWalk, Properties)
{
    Walk(PropertyOperations(), AllFunctions());
}

class FaultWalkDialog : public testing::TestWithParam<Operation>
{
};
TEST_P(FaultWalkDialog, Walk)
{
    Walk({&GetParam(), 1}, AllFunctions());
}
INSTANTIATE_TEST_SUITE_P(Each, FaultWalkDialog, testing::ValuesIn(DialogOperations().begin(), DialogOperations().end()),
                         [](const auto& row) { return std::string(row.param.name); });
} // namespace
