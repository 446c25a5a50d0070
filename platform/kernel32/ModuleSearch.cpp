#include "platform/kernel32/ModuleSearch.h"

#include "platform/kernel32/Failure.h"
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

fs::path FindModuleFile(LPCWSTR szFileName, const fs::path& programFolder)
{
    Require(szFileName && *szFileName, ERROR_MOD_NOT_FOUND);
    const bool bAbsolute = IsAbsoluteName(szFileName);
    for (const auto& folder : {PlatformPath(programFolder / ""), std::u16string(u"C:\\windows\\system32\\"), std::u16string()})
    {
        const auto file = bAbsolute && !folder.empty()
                              ? fs::path()
                              : RealFile(RealPath((folder + szFileName).c_str(), MAX_PATH, ERROR_MOD_NOT_FOUND));
        if (!file.empty())
            return file;
    }
    throw Failure{ERROR_MOD_NOT_FOUND};
}
} // namespace platform
