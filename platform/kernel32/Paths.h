// Where platform paths lie in this machine's file system.
//
// All state of the stand-in lives under one root folder, named by the environment variable PLATFORM_ROOT (default:
// "platform-root" beside the running program): drive_c/ is drive C:, registry.json the registry. Drive Z: is the
// machine's own root folder, so every real file has a platform path; a real path ("/home/x") is understood as well.
// Separators may be backslashes or slashes. Other names than a drive's letter are as they are written: nothing here
// spells one file in two ways.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace platform
{
// Makes the root folder with drive_c/windows/system32 when it is missing.
std::filesystem::path RootFolder();

struct CheckedPath
{
    DWORD dwError; // ERROR_SUCCESS when the path may be used
    std::filesystem::path hostPath;
};

// The real path behind a path given by a caller, without "." and ".." (none leads above the root of a drive); a final
// separator stays. It may be relative to the current folder. A null, empty or blank path, or one to a drive that there
// is not, is ERROR_PATH_NOT_FOUND; one with a character that no name may have ERROR_INVALID_NAME. A path that is, with
// the current folder in front, as long as the limit or longer is the error that belongs to the limit.
CheckedPath CheckPath(LPCWSTR szPath, std::size_t cchLimit = MAX_PATH, DWORD dwLimitError = ERROR_PATH_NOT_FOUND);

// The platform's name for a real path: C:\... below drive_c, Z:\... elsewhere.
std::u16string PlatformPath(const std::filesystem::path& hostPath);
} // namespace platform
