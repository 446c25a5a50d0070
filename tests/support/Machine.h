// What each build knows of its machine in its own way.
#pragma once

#include <windows.h>

#include <cstddef>
#include <vector>

namespace tests
{
// What the process holds of the machine, to be compared around many operations.
struct ProcessResources
{
    std::size_t nHandles = 0; // open handles of the system
    std::size_t cbMemory = 0; // bytes that the allocators have handed out
};
ProcessResources MeasureResources();

// What is alive of the platform's objects, to be compared around an operation that must leave nothing behind: one count for
// each kind of object; none on the real platform, which keeps no such counts.
std::vector<long> LiveObjects();

// What the control of a message box holds as the icon of a warning.
LRESULT WarningIcon();
} // namespace tests
