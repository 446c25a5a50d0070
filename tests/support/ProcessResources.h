// What the process holds of the machine, to be compared around many operations.
#pragma once

#include <cstddef>

namespace tests
{
struct ProcessResources
{
    std::size_t nHandles = 0; // open handles of the system
    std::size_t cbMemory = 0; // bytes that the allocators have handed out
};
ProcessResources MeasureResources();
} // namespace tests
