#include "tests/support/FailingAllocation.h"

namespace tests
{
namespace
{
// Plain numbers, so that reading them allocates nothing. 0: nothing is counted.
thread_local unsigned t_uNth = 0;
thread_local unsigned t_uCounted = 0;
} // namespace

CFailingAllocation::CFailingAllocation(unsigned uNth)
{
    t_uCounted = 0;
    t_uNth = uNth;
}

CFailingAllocation::~CFailingAllocation()
{
    t_uNth = 0;
}

unsigned CountedAllocations()
{
    return t_uCounted;
}

bool AllocationsAreCounted() noexcept
{
    return t_uNth != 0;
}

bool AllocationFails() noexcept
{
    return t_uNth != 0 && ++t_uCounted == t_uNth;
}
} // namespace tests
