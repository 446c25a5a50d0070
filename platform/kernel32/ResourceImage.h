// The compiled resources of a module in the .res form.
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <vector>

namespace platform
{
struct ResourceRecord
{
    WORD wType; // 0 for one that has a text in place of a number: nobody here asks for it
    WORD wName;
    std::span<const std::byte> data;
};

// Whether the bytes begin as every .res file does.
bool HasResourceHeader(std::span<const std::byte> image);

// The records of the image, in their order; borrows the bytes. Reading stops at the first record that is not whole, so
// that a damaged image gives what stands before the damage.
std::vector<ResourceRecord> ReadResourceImage(std::span<const std::byte> image);
} // namespace platform
