#include "tests/support/ProcessResources.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <unistd.h>

namespace tests
{
ProcessResources MeasureResources()
{
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    std::size_t nPages = 0;
    std::ifstream("/proc/self/statm") >> nPages >> nPages; // the second number is what is resident
    return {static_cast<std::size_t>(std::distance(begin(descriptors), end(descriptors))),
            nPages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE))};
}
} // namespace tests
