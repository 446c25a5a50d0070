// How kernel functions hand out a text: the length without terminator when it fits, else the size that is needed
// (terminator included) with the buffer untouched.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace platform
{
inline DWORD ReturnText(std::u16string_view text, LPWSTR szBuffer, DWORD cchBuffer) noexcept
{
    const auto cchText = static_cast<DWORD>(text.size());
    if (!szBuffer || cchBuffer <= cchText)
        return cchText + 1;
    *std::copy(text.begin(), text.end(), szBuffer) = u'\0';
    return cchText;
}
} // namespace platform
