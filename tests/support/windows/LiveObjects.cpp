#include "tests/support/LiveObjects.h"

namespace tests
{
std::vector<long> LiveObjects()
{
    return {};
}
} // namespace tests
