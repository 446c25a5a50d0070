#include "XmlText.h"

#include <algorithm>
#include <cstddef>

namespace platform::msxml3
{
namespace
{
struct Range
{
    char32_t first;
    char32_t last;
};

// Ascending, so that a character's place can be searched.
constexpr Range nameStarts[] = {
    {U'A', U'Z'},     {U'_', U'_'},     {U'a', U'z'},     {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F},
    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};
constexpr Range nameContinuations[] = {
    {U'-', U'.'}, {U'0', U'9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040},
};

template <std::size_t count>
bool IsAmong(const Range (&ranges)[count], char32_t ch) noexcept
{
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [ch](const Range& range) { return ch >= range.first && ch <= range.last; });
}

bool IsHighSurrogate(char16_t ch) noexcept
{
    return ch >= 0xD800 && ch <= 0xDBFF;
}

bool IsLowSurrogate(char16_t ch) noexcept
{
    return ch >= 0xDC00 && ch <= 0xDFFF;
}

bool IsPairAt(std::u16string_view text, std::size_t i) noexcept
{
    return IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1]);
}
} // namespace

bool IsXmlSpace(char16_t ch) noexcept
{
    return ch == u' ' || ch == u'\t' || ch == u'\n' || ch == u'\r';
}

bool IsAllXmlSpace(std::u16string_view text) noexcept
{
    return std::all_of(text.begin(), text.end(), IsXmlSpace);
}

std::u16string_view TrimXmlSpace(std::u16string_view text) noexcept
{
    while (!text.empty() && IsXmlSpace(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsXmlSpace(text.back()))
        text.remove_suffix(1);
    return text;
}

std::size_t FindIllegal(std::u16string_view text) noexcept
{
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char16_t ch = text[i];
        if (IsPairAt(text, i))
        {
            ++i;
            continue;
        }
        if (IsHighSurrogate(ch) || IsLowSurrogate(ch) || ch >= 0xFFFE || (ch < 0x20 && !IsXmlSpace(ch)))
            return i;
    }
    return std::u16string_view::npos;
}

bool IsPlainName(std::u16string_view name) noexcept
{
    for (std::size_t i = 0; i < name.size(); ++i)
    {
        const bool bFirst = i == 0;
        char32_t ch = name[i];
        if (IsPairAt(name, i))
        {
            ch = 0x10000 + ((ch - 0xD800) << 10) + (char32_t{name[i + 1]} - 0xDC00);
            ++i;
        }
        if (!IsAmong(nameStarts, ch) && (bFirst || !IsAmong(nameContinuations, ch)))
            return false;
    }
    return !name.empty();
}

bool IsQualifiedName(std::u16string_view name) noexcept
{
    const std::size_t colon = name.find(u':');
    if (colon == std::u16string_view::npos)
        return IsPlainName(name);
    return IsPlainName(name.substr(0, colon)) && IsPlainName(name.substr(colon + 1));
}

std::u16string_view PrefixOf(std::u16string_view name) noexcept
{
    const std::size_t colon = name.find(u':');
    return colon == std::u16string_view::npos ? std::u16string_view() : name.substr(0, colon);
}

std::u16string_view BaseOf(std::u16string_view name) noexcept
{
    return name.substr(name.find(u':') + 1); // npos + 1 is 0
}
} // namespace platform::msxml3
