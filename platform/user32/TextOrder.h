// Texts as list boxes compare them.
#pragma once

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace platform::user32
{
inline WCHAR FoldCase(WCHAR ch) noexcept
{
    const bool bLatinCapital = (ch >= u'A' && ch <= u'Z') || (ch >= 0xC0 && ch <= 0xDE && ch != 0xD7);
    return bLatinCapital ? static_cast<WCHAR>(ch + 0x20) : ch;
}

// Below 0, 0 or above 0; the case of Latin letters makes no difference.
inline int CompareText(std::u16string_view left, std::u16string_view right) noexcept
{
    const auto common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i)
        if (const int nDifference = FoldCase(left[i]) - FoldCase(right[i]))
            return nDifference;
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}
} // namespace platform::user32
