// Texts in the registry, for the stand-in's own use.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace platform::registry
{
// A text value of a sub-key up to its terminator; nothing when it cannot be read or is no REG_SZ. Not subject to
// planned faults: those are for the callers of the registry functions.
std::optional<std::u16string> ReadText(HKEY hKey, LPCWSTR szSubKey, LPCWSTR szValueName);
} // namespace platform::registry
