// Texts as windows hand them out.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace platform::user32
{
// Copies what fits with the terminator; the number of units copied, without it.
inline int CopyText(std::u16string_view text, LPWSTR szBuffer, std::size_t cchBuffer) noexcept
{
    if (!szBuffer || cchBuffer == 0)
        return 0;
    const auto cchCopied = std::min(text.size(), cchBuffer - 1);
    std::copy_n(text.begin(), cchCopied, szBuffer);
    szBuffer[cchCopied] = 0;
    return static_cast<int>(cchCopied);
}
} // namespace platform::user32
