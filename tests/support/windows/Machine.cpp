#include <windows.h>

#include <winternl.h>

#include "host/Library.h"
#include "tests/support/Machine.h"

#include <algorithm>

namespace tests
{
namespace
{
// From the system's own list of all handles: not every version of the platform keeps the count of one process's handles.
std::size_t CountHandles()
{
    const auto pQuery = Export<decltype(&NtQuerySystemInformation)>(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation");
    std::vector<BYTE> list(std::size_t{1} << 22);
    if (pQuery(SystemHandleInformation, list.data(), static_cast<ULONG>(list.size()), nullptr) < 0)
        return 0;
    const auto* const pList = reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(list.data());
    const auto isOurs = [](const SYSTEM_HANDLE_ENTRY& handle) { return handle.OwnerPid == GetCurrentProcessId(); };
    return static_cast<std::size_t>(std::count_if(pList->Handle, pList->Handle + pList->Count, isOurs));
}

std::size_t BytesOf(HANDLE hHeap)
{
    std::size_t cbUsed = 0;
    HeapLock(hHeap);
    PROCESS_HEAP_ENTRY entry = {};
    while (HeapWalk(hHeap, &entry))
        cbUsed += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) ? entry.cbData : 0;
    HeapUnlock(hHeap);
    return cbUsed;
}

} // namespace

// The memory is what is in use in all heaps, however little of it has been touched.
ProcessResources MeasureResources()
{
    constexpr DWORD nMostHeaps = 64;
    HANDLE heaps[nMostHeaps] = {};
    ProcessResources resources = {CountHandles(), 0};
    for (DWORD n = std::min(GetProcessHeaps(nMostHeaps, heaps), nMostHeaps); n > 0; --n)
        resources.cbMemory += BytesOf(heaps[n - 1]);
    return resources;
}

std::vector<long> LiveObjects()
{
    return {};
}

LRESULT WarningIcon()
{
    return reinterpret_cast<LRESULT>(LoadIconW(nullptr, IDI_WARNING));
}
} // namespace tests
