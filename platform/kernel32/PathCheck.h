// What the platform refuses before it looks at any file.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace platform
{
struct CheckedPath
{
    DWORD dwError; // ERROR_SUCCESS when the path may be used
    std::filesystem::path hostPath;
    std::u16string fullPath; // see FullPath
};

// The real path behind a path given by a caller. A null, empty or blank path, or one to a drive that there is not, is
// ERROR_PATH_NOT_FOUND; one with a character that no name may have (or a component beyond 255 characters)
// ERROR_INVALID_NAME. A full path as long as the limit or longer is the error that belongs to the limit.
CheckedPath CheckPath(LPCWSTR szPath, std::size_t cchLimit = MAX_PATH, DWORD dwLimitError = ERROR_PATH_NOT_FOUND);
} // namespace platform
