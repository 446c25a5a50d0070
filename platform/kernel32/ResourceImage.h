// The compiled resources of a module in the .res form.
#pragma once

#include <windows.h>

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace platform
{
// The type or name of a resource: a number or, when the text is not empty, a text.
struct ResourceId
{
    WORD wOrdinal = 0;
    std::u16string text;

    // From MAKEINTRESOURCE, "#123" or a text.
    static ResourceId FromArgument(LPCWSTR szId);
    // Texts are the same whatever their case.
    bool operator==(const ResourceId& other) const;
};

struct ResourceRecord
{
    ResourceId type;
    ResourceId name;
    WORD wLanguage = 0;
    std::span<const std::byte> data;
};

// Whether the bytes begin as every .res file does.
bool HasResourceHeader(std::span<const std::byte> image);

// The records of the image, in their order; borrows the bytes. Reading stops at the first record that is not whole, so
// that a damaged image gives what stands before the damage.
std::vector<ResourceRecord> ReadResourceImage(std::span<const std::byte> image);
} // namespace platform
