// Every platform function fails at every call in every public operation.
#include "tests/module/Walker.h"

namespace
{
using namespace tests::walk;

std::vector<tests::PlatformFunction> AllFunctions()
{
    std::vector<tests::PlatformFunction> functions(std::begin(tests::platformFunctions), std::end(tests::platformFunctions));
    functions.insert(functions.end(), std::begin(tests::documentOperations), std::end(tests::documentOperations));
    return functions;
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
