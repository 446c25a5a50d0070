#include <windows.h>

#include <psapi.h>

#include "tests/support/ProcessResources.h"

namespace tests
{
ProcessResources MeasureResources()
{
    DWORD dwHandles = 0;
    GetProcessHandleCount(GetCurrentProcess(), &dwHandles);
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof(counters);
    K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
    return {dwHandles, counters.WorkingSetSize};
}
} // namespace tests
