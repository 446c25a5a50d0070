// Where platform paths lie in this machine's file system.
//
// All state of the stand-in lives under one root folder, named by the environment variable PLATFORM_ROOT (default:
// "platform-root" beside the running program): drive_c/ is drive C:, registry.json the registry. Drive Z: is the
// machine's own root folder, so every real file has a platform path. Separators may be backslashes or slashes. Names
// are the same when they differ in case only, also where the machine could tell them apart; an exact match goes first.
// Only a path that already is a real one ("/home/x") is taken as it is written: who has it from the machine's own
// functions goes on to use them.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace platform
{
// Makes the root folder with drive_c/windows/system32 when it is missing.
const std::filesystem::path& RootFolder();

// The path from its drive on, without "." and ".." (none leads above the root of a drive) and without the dots and
// blanks that the platform drops at the end of names; a final separator stays. The path may be absolute ("c:\x",
// "Z:\home\x"), relative to the current folder ("en-US\x.mui", "z:x" with that drive's letter) or its drive ("\x"), or
// one that already is a real one ("/home/x").
std::u16string FullPath(std::u16string_view platformPath);

// The real path behind a platform path.
std::filesystem::path HostPath(std::u16string_view platformPath);

enum class NameCase
{
    Any,
    AsWritten,
    LastAsWritten, // for what gets a new name
};
// How the names of a path are looked for: a real path's as they are written.
NameCase CaseOf(std::u16string_view platformPath);
// The same for what FullPath gave.
std::filesystem::path HostPathOfFull(std::u16string_view fullPath, NameCase nameCase);

// The platform's name for a real path: C:\... below drive_c, Z:\... elsewhere.
std::u16string PlatformPath(const std::filesystem::path& hostPath);
} // namespace platform
