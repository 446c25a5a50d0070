#include "platform/kernel32/PathCheck.h"

#include "platform/kernel32/Paths.h"

#include <algorithm>
#include <utility>

namespace platform
{
namespace
{
constexpr std::size_t cchComponentMax = 255;

// Of a full path: what follows the drive.
bool HasValidNames(std::u16string_view names)
{
    const bool bWrongCharacter =
        std::ranges::any_of(names, [](char16_t unit)
                            { return unit < 0x20 || std::u16string_view(u"<>:\"|?*").find(unit) != std::u16string_view::npos; });
    if (bWrongCharacter)
        return false;
    while (!names.empty())
    {
        const auto cchComponent = std::min(names.find(u'\\'), names.size());
        if (cchComponent > cchComponentMax)
            return false;
        names.remove_prefix(std::min(cchComponent + 1, names.size()));
    }
    return true;
}
} // namespace

CheckedPath CheckPath(LPCWSTR szPath, std::size_t cchLimit, DWORD dwLimitError)
{
    const std::u16string_view path(szPath ? szPath : u"");
    if (path.find_first_not_of(u' ') == path.npos)
        return {ERROR_PATH_NOT_FOUND, {}, {}};
    std::u16string fullPath = FullPath(path);
    if (fullPath.size() >= cchLimit)
        return {dwLimitError, {}, {}};
    if (!HasValidNames(std::u16string_view(fullPath).substr(2)))
        return {ERROR_INVALID_NAME, {}, {}};
    auto hostPath = HostPathOfFull(fullPath, CaseOf(path));
    std::error_code ignored;
    if (!std::filesystem::exists(HostPathOfFull(fullPath.substr(0, 3), NameCase::AsWritten), ignored)) // there is no such drive
        return {ERROR_PATH_NOT_FOUND, {}, {}};
    return {ERROR_SUCCESS, std::move(hostPath), std::move(fullPath)};
}
} // namespace platform
