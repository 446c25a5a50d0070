#include "platform/user32/TextColumns.h"

#include <wchar.h>

namespace platform::user32
{
namespace
{
locale_t Utf8Locale()
{
    static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t());
    return locale;
}

wchar_t CodePoint(std::u16string_view text, std::size_t& uAt)
{
    const unsigned uUnit = text[uAt++];
    const bool bPair = (uUnit & 0xFC00u) == 0xD800u && uAt < text.size() && (text[uAt] & 0xFC00u) == 0xDC00u;
    if (bPair)
        return static_cast<wchar_t>(0x10000u + ((uUnit & 0x3FFu) << 10) + (text[uAt++] & 0x3FFu));
    return static_cast<wchar_t>((uUnit & 0xF800u) == 0xD800u ? 0xFFFDu : uUnit);
}
} // namespace

CTerminalLocale::CTerminalLocale() : m_before(uselocale(Utf8Locale()))
{
}

ShownCharacter NextCharacter(std::u16string_view text, std::size_t& uAt)
{
    const CTerminalLocale used;
    const wchar_t ch = CodePoint(text, uAt);
    const int cColumns = wcwidth(ch);
    return cColumns < 0 ? ShownCharacter() : ShownCharacter{ch, cColumns};
}

int ColumnsOf(std::u16string_view text)
{
    int cColumns = 0;
    for (std::size_t uAt = 0; uAt < text.size();)
        cColumns += NextCharacter(text, uAt).cColumns;
    return cColumns;
}

std::size_t UnitsWithin(std::u16string_view text, int cColumns)
{
    std::size_t uFits = 0;
    for (std::size_t uAt = 0; uAt < text.size(); uFits = uAt)
    {
        cColumns -= NextCharacter(text, uAt).cColumns;
        if (cColumns < 0)
            break;
    }
    return uFits;
}
} // namespace platform::user32
