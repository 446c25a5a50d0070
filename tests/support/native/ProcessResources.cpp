#include "tests/support/ProcessResources.h"

#include <filesystem>
#include <iterator>

#include <malloc.h>

namespace tests
{
ProcessResources MeasureResources()
{
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    // What the allocator has handed out. A sanitizer's own allocator does not count here; it keeps freed memory back and
    // reports what was left by itself.
    const auto allocator = mallinfo2();
    return {static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors))), allocator.uordblks + allocator.hblkhd};
}
} // namespace tests
