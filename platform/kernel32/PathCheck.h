// What the platform refuses before it looks at any file.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string_view>

namespace platform
{
struct CheckedPath
{
    DWORD dwError; // ERROR_SUCCESS when the path may be used
    std::filesystem::path hostPath;
};

// The real path behind a path given by a caller. A null, empty or overlong path is ERROR_PATH_NOT_FOUND, one with a
// character that no name may have (or a component beyond 255 characters) ERROR_INVALID_NAME.
CheckedPath CheckPath(LPCWSTR szPath);
} // namespace platform
