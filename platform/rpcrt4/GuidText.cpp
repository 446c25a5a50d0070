#include "platform/rpcrt4/GuidText.h"

namespace platform
{
namespace
{
constexpr std::u16string_view digits = u"0123456789abcdef";
constexpr std::size_t cchGuid = 36;

bool IsDash(std::size_t position)
{
    return position == 8 || position == 13 || position == 18 || position == 23;
}

// The bytes in the order in which the text has them: the first three numbers from their highest byte.
using TextBytes = std::uint8_t[16];

void ToTextBytes(const GUID& guid, TextBytes& bytes)
{
    for (unsigned i = 0; i < 4; ++i)
        bytes[i] = static_cast<std::uint8_t>(guid.Data1 >> (24 - 8 * i));
    for (unsigned i = 0; i < 2; ++i)
    {
        bytes[4 + i] = static_cast<std::uint8_t>(guid.Data2 >> (8 - 8 * i));
        bytes[6 + i] = static_cast<std::uint8_t>(guid.Data3 >> (8 - 8 * i));
    }
    for (unsigned i = 0; i < 8; ++i)
        bytes[8 + i] = guid.Data4[i];
}

GUID FromTextBytes(const TextBytes& bytes)
{
    GUID guid{};
    for (unsigned i = 0; i < 4; ++i)
        guid.Data1 = guid.Data1 << 8 | bytes[i];
    guid.Data2 = static_cast<std::uint16_t>(bytes[4] << 8 | bytes[5]);
    guid.Data3 = static_cast<std::uint16_t>(bytes[6] << 8 | bytes[7]);
    for (unsigned i = 0; i < 8; ++i)
        guid.Data4[i] = bytes[8 + i];
    return guid;
}
} // namespace

std::u16string GuidToText(const GUID& guid)
{
    TextBytes bytes;
    ToTextBytes(guid, bytes);
    std::u16string text;
    text.reserve(cchGuid);
    for (const std::uint8_t byte : bytes)
    {
        if (IsDash(text.size()))
            text += u'-';
        text += digits[byte >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

std::optional<GUID> GuidFromText(std::u16string_view text)
{
    if (text.size() != cchGuid)
        return std::nullopt;
    TextBytes bytes{};
    std::size_t digit = 0;
    for (std::size_t i = 0; i < cchGuid; ++i)
    {
        if (IsDash(i))
        {
            if (text[i] != u'-')
                return std::nullopt;
            continue;
        }
        const char16_t lower = text[i] >= u'A' && text[i] <= u'F' ? static_cast<char16_t>(text[i] - u'A' + u'a') : text[i];
        const auto value = digits.find(lower);
        if (value == digits.npos)
            return std::nullopt;
        bytes[digit / 2] = static_cast<std::uint8_t>(bytes[digit / 2] * 16u + value);
        ++digit;
    }
    return FromTextBytes(bytes);
}
} // namespace platform
