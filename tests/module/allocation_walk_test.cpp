// Every allocation fails, of the language's and of the platform's, in every public operation.
#include "tests/module/Walker.h"

namespace
{
using namespace tests::walk;

std::vector<tests::PlatformFunction> Allocators()
{
    std::vector<tests::PlatformFunction> allocators = {operatorNew};
    for (const auto& function : tests::platformFunctions)
    {
        if (function.effect == tests::FaultEffect::Memory)
            allocators.push_back(function);
    }
    return allocators;
}

TEST(AllocationWalk, Module)
{
    Walk(ModuleOperations(), Allocators());
}
TEST(AllocationWalk, Objects)
{
    Walk(ObjectOperations(), Allocators());
}
TEST(AllocationWalk, Properties)
{
    Walk(PropertyOperations(), Allocators());
}

class AllocationWalkDialog : public testing::TestWithParam<Operation>
{
};
TEST_P(AllocationWalkDialog, Walk)
{
    Walk({&GetParam(), 1}, Allocators());
}
INSTANTIATE_TEST_SUITE_P(Each, AllocationWalkDialog, testing::ValuesIn(DialogOperations().begin(), DialogOperations().end()),
                         [](const auto& row) { return std::string(row.param.name); });
} // namespace
