// The module carries its run-time inside, so its allocations come out of it by the import of malloc.
#include <windows.h>

#include "tests/support/FailingAllocation.h"
#include "tests/support/windows/FaultableImports.h"

#include <cstdlib>

namespace tests::faults
{
namespace
{
decltype(&std::malloc) g_pMalloc = nullptr;

void* __cdecl CountedMalloc(std::size_t cb)
{
    return AllocationFails() ? nullptr : g_pMalloc(cb);
}
} // namespace

const std::vector<FaultableImport>& AllocationImports()
{
    static const std::vector<FaultableImport> imports = {
        {"malloc", reinterpret_cast<void*>(&CountedMalloc), reinterpret_cast<void**>(&g_pMalloc)}};
    return imports;
}
} // namespace tests::faults
