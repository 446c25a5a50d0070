// Where platform paths lie in this machine's file system.
//
// All state of the stand-in lives under one root folder, named by the environment variable PLATFORM_ROOT (default:
// "platform-root" beside the running program): drive_c/ is drive C:, registry.json the registry. Drive Z: is the
// machine's own root folder, so every real file has a platform path. Separators may be backslashes or slashes; the
// drive letter's case does not matter, the rest of a path is taken as written.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace platform
{
// Makes the root folder with drive_c/windows/system32 when it is missing.
const std::filesystem::path& RootFolder();

// The real path behind a platform path: absolute ("c:\x", "Z:\home\x"), relative to the current directory
// ("en-US\x.mui"), or a path that already is a real one ("/home/x").
std::filesystem::path HostPath(std::u16string_view platformPath);

// The platform's name for a real path: C:\... below drive_c, Z:\... elsewhere.
std::u16string PlatformPath(const std::filesystem::path& hostPath);
} // namespace platform
