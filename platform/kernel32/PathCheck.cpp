#include "platform/kernel32/PathCheck.h"

#include "platform/kernel32/Paths.h"

#include <algorithm>

namespace platform
{
namespace
{
constexpr std::size_t cchComponentMax = 255;

bool IsValidName(std::u16string_view path)
{
    if (path.size() >= 2 && path[1] == u':')
        path.remove_prefix(2);
    const bool bWrongCharacter =
        std::ranges::any_of(path, [](char16_t unit)
                            { return unit < 0x20 || std::u16string_view(u"<>:\"|?*").find(unit) != std::u16string_view::npos; });
    if (bWrongCharacter)
        return false;
    while (!path.empty())
    {
        const auto cchComponent = std::min(path.find_first_of(u"\\/"), path.size());
        if (cchComponent > cchComponentMax)
            return false;
        path.remove_prefix(std::min(cchComponent + 1, path.size()));
    }
    return true;
}
} // namespace

CheckedPath CheckPath(LPCWSTR szPath)
{
    if (!szPath || !*szPath)
        return {ERROR_PATH_NOT_FOUND, {}};
    const std::u16string_view path(szPath);
    // The limit counts the terminator.
    if (path.size() >= MAX_PATH)
        return {ERROR_PATH_NOT_FOUND, {}};
    if (!IsValidName(path))
        return {ERROR_INVALID_NAME, {}};
    return {ERROR_SUCCESS, HostPath(path)};
}
} // namespace platform
