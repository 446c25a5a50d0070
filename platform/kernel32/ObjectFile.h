// The files of this machine's own shared objects, read without loading them.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace platform
{
// What lies between two symbols that the object exports; nothing when it has not both of them, or is no such object.
std::span<const std::byte> BytesBetween(std::span<const std::byte> object, std::string_view begin, std::string_view end);
} // namespace platform
