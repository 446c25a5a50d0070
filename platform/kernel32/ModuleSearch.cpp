#include "platform/kernel32/ModuleSearch.h"

#include "platform/kernel32/Paths.h"

#include <string>

namespace platform
{
namespace fs = std::filesystem;

namespace
{
bool IsAbsoluteName(std::u16string_view name)
{
    return name.starts_with(u'\\') || name.starts_with(u'/') || (name.size() >= 2 && name[1] == u':');
}

fs::path RealFile(const fs::path& file)
{
    std::error_code error;
    const fs::path real = fs::canonical(file, error);
    return !error && fs::is_regular_file(real, error) ? real : fs::path();
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

ModuleFile FindModuleFile(LPCWSTR szFileName)
{
    const auto named = CheckPath(szFileName);
    if (named.dwError != ERROR_SUCCESS)
        return {named.dwError == ERROR_PATH_NOT_FOUND ? ERROR_MOD_NOT_FOUND : named.dwError, {}};
    fs::path file;
    if (!IsAbsoluteName(szFileName))
    {
        for (const auto& folder : {PlatformPath(ProgramFile().parent_path()), std::u16string(u"C:\\windows\\system32")})
        {
            file = RealFile(CheckPath((folder + u'\\' + szFileName).c_str()).hostPath);
            if (!file.empty())
                return {ERROR_SUCCESS, file};
        }
    }
    file = RealFile(named.hostPath);
    return {file.empty() ? ERROR_MOD_NOT_FOUND : ERROR_SUCCESS, file};
}
} // namespace platform
