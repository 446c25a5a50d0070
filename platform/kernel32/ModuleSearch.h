// Where the loader looks for a module's file.
#pragma once

#include <windows.h>

#include <filesystem>

namespace platform
{
// The running program's file.
const std::filesystem::path& ProgramFile();

struct ModuleFile
{
    DWORD dwError; // ERROR_SUCCESS when there is such a file
    std::filesystem::path file;
};

// The real name of the module's file: an absolute name as it stands, any other below the program's folder, the system
// directory, the current directory, in this order.
ModuleFile FindModuleFile(LPCWSTR szFileName);
} // namespace platform
