// What text and names XML allows.
#pragma once

#include <string_view>

namespace platform::msxml3
{
// A blank, a tab, a line feed or a carriage return.
bool IsXmlSpace(char16_t ch) noexcept;
bool IsAllXmlSpace(std::u16string_view text) noexcept;
std::u16string_view TrimXmlSpace(std::u16string_view text) noexcept;

// The index of the first code unit that no XML text may hold (a control character, a lone surrogate, U+FFFE or U+FFFF),
// or npos.
std::size_t FindIllegal(std::u16string_view text) noexcept;

// A name without a colon.
bool IsPlainName(std::u16string_view name) noexcept;
// A plain name, or two of them with a colon between.
bool IsQualifiedName(std::u16string_view name) noexcept;

// The two halves of a qualified name; the prefix is empty when there is none.
std::u16string_view PrefixOf(std::u16string_view name) noexcept;
std::u16string_view BaseOf(std::u16string_view name) noexcept;
} // namespace platform::msxml3
