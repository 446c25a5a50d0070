#include "Library.h"

#include "platform/kernel32/Unicode.h"

namespace platform::msxml3
{
std::optional<std::string> ToLibrary(std::u16string_view text)
{
    bool bIsPairOpen = false;
    for (const char16_t unit : text)
    {
        const bool bCloses = (unit & 0xFC00) == 0xDC00;
        if (bCloses != bIsPairOpen || unit == 0)
            return std::nullopt;
        bIsPairOpen = (unit & 0xFC00) == 0xD800;
    }
    return bIsPairOpen ? std::nullopt : std::optional(ToUtf8(text));
}

std::u16string FromLibrary(const xmlChar* pText)
{
    return pText ? FromUtf8(reinterpret_cast<const char*>(pText)) : std::u16string();
}

std::optional<std::string> ToPlainName(std::u16string_view text)
{
    auto name = ToLibrary(text);
    return name && xmlValidateNCName(Units(*name), 0) == 0 ? name : std::nullopt;
}
} // namespace platform::msxml3
