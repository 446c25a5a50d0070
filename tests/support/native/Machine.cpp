#include "tests/support/Machine.h"

#include "platform/testing/Accounts.h"

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

std::vector<long> LiveObjects()
{
    using platform::testing::Account;
    std::vector<long> counts;
    for (int i = 0; i < static_cast<int>(Account::Count_); ++i)
        counts.push_back(platform::testing::LiveObjects(static_cast<Account>(i)));
    return counts;
}

// The stand-in knows the standard icons by their numbers alone.
LRESULT WarningIcon()
{
    return 32515;
}
} // namespace tests
