// Where the loader looks for a module's file, and what it finds in it.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace platform
{
// The running program's file.
const std::filesystem::path& ProgramFile();

struct ModuleName
{
    DWORD dwError; // ERROR_SUCCESS when the name may be used
    std::u16string name;
    bool bBare; // without any folder
};

// The name as the loader reads it: a last component without a dot stands for one that ends in ".dll".
ModuleName ReadModuleName(LPCWSTR szFileName);

// The real name of the module's file: an absolute name as it stands, any other below the program's folder, the system
// directory, the current directory, in this order. Empty when there is no such file.
std::filesystem::path FindModuleFile(const std::u16string& name);

// Whether an absolute name is that of a folder.
bool IsFolder(const std::u16string& name);

// Whether a file goes by a bare name, in whatever case.
bool HasBareName(const std::filesystem::path& file, std::u16string_view name);

enum class ModuleKind
{
    Code,
    Resources,
    Unknown,
};
ModuleKind KindOfModule(const std::filesystem::path& file);
} // namespace platform
