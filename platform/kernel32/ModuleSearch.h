// Where the loader looks for a module's file.
#pragma once

#include <windows.h>

#include <filesystem>

namespace platform
{
// The real name of the module's file: an absolute name as it stands, any other below the program's folder, the system
// directory, the current directory, in this order. Throws ERROR_MOD_NOT_FOUND, or what is wrong with the name.
std::filesystem::path FindModuleFile(LPCWSTR szFileName, const std::filesystem::path& programFolder);
} // namespace platform
