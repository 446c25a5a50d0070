// Strings from a module's resources.
#include "platform/user32/CopyText.h"
#include "platform/user32/PlannedFailure.h"
#include "platform/user32/Resource.h"

#include <cstring>
#include <optional>

namespace platform::user32
{
namespace
{
constexpr UINT stringsInBlock = 16;

// A block is 16 strings, each a length and that many units. Empty when the block ends before the string.
std::u16string_view StringInBlock(std::span<const WCHAR> block, UINT uIndex)
{
    for (UINT i = 0; !block.empty(); ++i)
    {
        const std::size_t cch = block.front();
        if (block.size() - 1 < cch)
            break;
        if (i == uIndex)
            return std::u16string_view(block.data() + 1, cch);
        block = block.subspan(1 + cch);
    }
    return {};
}

// Nothing when there is no such block; a string that is not in its block reads like an empty one.
std::optional<std::u16string_view> FindString(HINSTANCE hInstance, WORD uId)
{
    const auto bytes = ResourceBytes(hInstance, MAKEINTRESOURCEW(uId / stringsInBlock + 1), RT_STRING);
    if (bytes.empty())
        return std::nullopt;
    const std::span block(reinterpret_cast<const WCHAR*>(bytes.data()), bytes.size() / sizeof(WCHAR));
    return StringInBlock(block, uId % stringsInBlock);
}

// With no room for units the buffer is a pointer, which is told where the string lies in the resource.
int GiveReadOnly(std::u16string_view text, LPWSTR szBuffer)
{
    const WCHAR* const pText = text.data();
    std::memcpy(static_cast<void*>(szBuffer), &pText, sizeof(pText));
    return static_cast<int>(text.size());
}
} // namespace
} // namespace platform::user32

using namespace platform::user32;

int WINAPI LoadStringW(HINSTANCE hInstance, UINT uId, LPWSTR szBuffer, int cchBuffer)
{
    if (FailsAsPlanned("LoadStringW", ERROR_RESOURCE_NAME_NOT_FOUND))
        return 0;
    if (!szBuffer || cchBuffer < 0)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    // The low half of the identifier is the whole of it.
    const auto text = FindString(hInstance, LOWORD(uId));
    if (!text || text->empty())
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    if (!text) // the buffer stays as it was
        return 0;
    if (cchBuffer == 0)
        return text->empty() ? 0 : GiveReadOnly(*text, szBuffer);
    return CopyText(*text, szBuffer, static_cast<std::size_t>(cchBuffer));
}
