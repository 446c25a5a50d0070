// Running out of memory on purpose: one allocation that the module makes by the language's own means fails.
#pragma once

namespace tests
{
// While it lives, the module's allocations on this thread are counted, and number uNth of them (from 1) fails. Whatever
// the test, the platform and other threads allocate is not counted.
class CFailingAllocation
{
public:
    explicit CFailingAllocation(unsigned uNth);
    ~CFailingAllocation();
    CFailingAllocation(const CFailingAllocation&) = delete;
    CFailingAllocation& operator=(const CFailingAllocation&) = delete;
};

// How many were counted while the last of them lived.
unsigned CountedAllocations();

// Asked by the allocation functions themselves: counts one of the module's; true when it is to fail.
bool AllocationFails() noexcept;
bool AllocationsAreCounted() noexcept;
} // namespace tests
