#include "platform/kernel32/ModuleSearch.h"

#include "platform/kernel32/PathCheck.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/ResourceImage.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <fstream>

namespace platform
{
namespace fs = std::filesystem;

namespace
{
constexpr std::u16string_view separators = u"\\/:";

bool IsAbsoluteName(std::u16string_view name)
{
    return name[0] == u'\\' || name[0] == u'/' || (name.size() >= 2 && name[1] == u':');
}

fs::path RealFile(const fs::path& file)
{
    std::error_code error;
    const fs::path real = fs::canonical(file, error);
    return !error && fs::is_regular_file(real, error) ? real : fs::path();
}

constexpr char LowerOf(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 0x20) : character;
}
} // namespace

const fs::path& ProgramFile()
{
    static const auto* const pFile = []
    {
        std::error_code ignored;
        return new fs::path(fs::read_symlink("/proc/self/exe", ignored));
    }();
    return *pFile;
}

ModuleName ReadModuleName(LPCWSTR szFileName)
{
    const DWORD dwError = CheckPath(szFileName).dwError;
    if (dwError != ERROR_SUCCESS)
        return {dwError == ERROR_PATH_NOT_FOUND ? ERROR_MOD_NOT_FOUND : dwError, {}, false};
    std::u16string name(szFileName);
    const auto uSeparator = name.find_last_of(separators);
    const bool bBare = uSeparator == std::u16string::npos;
    const auto uDot = name.rfind(u'.');
    if (uDot == std::u16string::npos || (!bBare && uDot < uSeparator))
        name += u".dll";
    else if (uDot == name.size() - 1)
        name.pop_back(); // a final dot says that there is no extension
    return {ERROR_SUCCESS, std::move(name), bBare};
}

fs::path FindModuleFile(const std::u16string& name)
{
    if (IsAbsoluteName(name))
        return RealFile(HostPath(name));
    const std::array folders{PlatformPath(ProgramFile().parent_path()), std::u16string(u"C:\\windows\\system32"),
                             std::u16string(u".")};
    for (const auto& folder : folders)
    {
        auto file = RealFile(HostPath(folder + u'\\' + name));
        if (!file.empty())
            return file;
    }
    return {};
}

bool IsFolder(const std::u16string& name)
{
    std::error_code ignored;
    return IsAbsoluteName(name) && fs::is_directory(HostPath(name), ignored);
}

bool HasBareName(const fs::path& file, std::u16string_view name)
{
    return std::ranges::equal(file.filename().native(), ToUtf8(name), {}, LowerOf, LowerOf);
}

ModuleKind KindOfModule(const fs::path& file)
{
    std::array<char, 16> beginning{};
    std::ifstream(file, std::ios::binary).read(beginning.data(), beginning.size());
    if (std::memcmp(beginning.data(), "\177ELF", 4) == 0)
        return ModuleKind::Code;
    return HasResourceHeader(std::as_bytes(std::span(beginning))) ? ModuleKind::Resources : ModuleKind::Unknown;
}
} // namespace platform
