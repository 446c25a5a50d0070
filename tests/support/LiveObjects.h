// What is alive of the platform's objects, to be compared around an operation that must leave nothing behind.
#pragma once

#include <vector>

namespace tests
{
// One count for each kind of object; none on the real platform, which keeps no such counts.
std::vector<long> LiveObjects();
} // namespace tests
