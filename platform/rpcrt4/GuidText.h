// Identifiers as 36 characters: 8-4-4-4-12 hexadecimal digits, written in lower case, read in either.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform
{
std::u16string GuidToText(const GUID& guid);
// Nothing for any other form, braces included.
std::optional<GUID> GuidFromText(std::u16string_view text);
} // namespace platform
