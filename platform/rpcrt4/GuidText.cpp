#include "platform/rpcrt4/GuidText.h"

#include <array>
#include <cstdio>

namespace platform
{
namespace
{
constexpr std::u16string_view form = u"00000000-0000-0000-0000-000000000000";

constexpr bool IsHexDigit(char16_t unit)
{
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}
} // namespace

std::u16string GuidToText(const GUID& guid)
{
    std::array<char, form.size() + 1> text;
    const auto& last = guid.Data4;
    std::snprintf(text.data(), text.size(), "%08x-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", guid.Data1, guid.Data2,
                  guid.Data3, last[0], last[1], last[2], last[3], last[4], last[5], last[6], last[7]);
    return {text.begin(), text.end() - 1};
}

std::optional<GUID> GuidFromText(std::u16string_view text)
{
    if (text.size() != form.size())
        return std::nullopt;
    std::array<char, form.size() + 1> narrow{};
    for (std::size_t i = 0; i < form.size(); ++i)
    {
        if (form[i] == u'-' ? text[i] != u'-' : !IsHexDigit(text[i]))
            return std::nullopt;
        narrow[i] = static_cast<char>(text[i]);
    }
    GUID guid{};
    auto& last = guid.Data4;
    std::sscanf(narrow.data(), "%8x-%4hx-%4hx-%2hhx%2hhx-%2hhx%2hhx%2hhx%2hhx%2hhx%2hhx", &guid.Data1, &guid.Data2, &guid.Data3,
                &last[0], &last[1], &last[2], &last[3], &last[4], &last[5], &last[6], &last[7]);
    return guid;
}
} // namespace platform
