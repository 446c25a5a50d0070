// Where platform paths lie in this machine's file system.
//
// All state of the stand-in lives under one root folder, named by the environment variable PLATFORM_ROOT (default:
// "platform-root" beside a built program, ~/.local/state/korihvui for an installed one): drive_c/ is drive C:,
// registry.json the registry. Drive Z: is the machine's own root folder, so every real file has a platform path; a real
// path ("/home/x") is understood as well. Separators may be backslashes or slashes. Other names than a drive's letter
// are as they are written: nothing here spells one file in two ways.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

namespace platform
{
// Makes the root folder with drive_c/windows/system32 when it is missing.
std::filesystem::path RootFolder();

// The real path behind a path given by a caller, without "." and ".." (none leads above the root of a drive); a final
// separator stays. It may be relative to the current folder. Throws Failure: ERROR_PATH_NOT_FOUND for a null, empty or blank
// path, or one to a drive that there is not; ERROR_INVALID_NAME for a character that no name may have; the error that
// belongs to the limit for a path that is, with the current folder in front, as long or longer.
std::filesystem::path RealPath(LPCWSTR szPath, std::size_t cchLimit = MAX_PATH, DWORD dwLimitError = ERROR_PATH_NOT_FOUND);

// The platform's name for a real path: C:\... below drive_c, Z:\... elsewhere.
std::u16string PlatformPath(const std::filesystem::path& realPath);
} // namespace platform
