// Between the platform's UTF-16 and the file system's UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace platform
{
// The text with U+FFFD in place of every lone surrogate: what is left the same is well-formed.
std::u16string WellFormed(std::u16string_view text);

// Lone surrogates become U+FFFD; a name that has one therefore never reaches a file that has not.
std::string ToUtf8(std::u16string_view text);
// Ill-formed sequences become U+FFFD.
std::u16string FromUtf8(std::string_view text);

// Of the 26 basic letters; anything else stays as it is.
constexpr char16_t UpperOf(char16_t unit)
{
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
}
} // namespace platform
