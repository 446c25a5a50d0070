#include "platform/crt/FormatConversion.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace platform
{
namespace
{
constexpr auto numberMax = static_cast<std::size_t>(std::numeric_limits<int>::max());

constexpr bool IsDigit(WCHAR unit)
{
    return unit >= u'0' && unit <= u'9';
}

std::size_t ReadNumber(const WCHAR*& szFormat)
{
    std::size_t number = 0;
    for (; IsDigit(*szFormat); ++szFormat)
        number = std::min(number * 10 + (*szFormat - u'0'), numberMax);
    return number;
}

bool Skip(const WCHAR*& szFormat, std::u16string_view text)
{
    // Compared unit by unit: the format may end sooner than the text.
    const WCHAR* sz = szFormat;
    for (const char16_t unit : text)
    {
        if (*sz++ != unit)
            return false;
    }
    szFormat = sz;
    return true;
}

void ReadFlags(const WCHAR*& szFormat, Conversion& conversion)
{
    for (;; ++szFormat)
    {
        switch (*szFormat)
        {
        case u'-':
            conversion.bLeft = true;
            break;
        case u'0':
            conversion.bZero = true;
            break;
        case u'+':
            conversion.bPlus = true;
            break;
        case u' ':
            conversion.bBlank = true;
            break;
        case u'#':
            conversion.bAlternative = true;
            break;
        default:
            return;
        }
    }
}

void ReadWidth(const WCHAR*& szFormat, Arguments& arguments, Conversion& conversion)
{
    if (!Skip(szFormat, u"*"))
    {
        conversion.cchWidth = ReadNumber(szFormat);
        return;
    }
    const std::int64_t nWidth = va_arg(arguments.list, int);
    conversion.bLeft = conversion.bLeft || nWidth < 0;
    conversion.cchWidth = static_cast<std::size_t>(nWidth < 0 ? -nWidth : nWidth);
}

void ReadPrecision(const WCHAR*& szFormat, Arguments& arguments, Conversion& conversion)
{
    if (!Skip(szFormat, u"."))
        return;
    if (!Skip(szFormat, u"*"))
    {
        conversion.cchPrecision = ReadNumber(szFormat);
        return;
    }
    const int nPrecision = va_arg(arguments.list, int);
    if (nPrecision >= 0)
        conversion.cchPrecision = static_cast<std::size_t>(nPrecision);
}

ArgumentSize ReadSize(const WCHAR*& szFormat)
{
    // A longer prefix comes before the one that it begins with.
    static constexpr struct
    {
        std::u16string_view text;
        ArgumentSize size;
    } sizes[] = {
        {u"hh", ArgumentSize::Short},  {u"h", ArgumentSize::Short},     {u"ll", ArgumentSize::Wide},
        {u"l", ArgumentSize::Long},    {u"w", ArgumentSize::Long},      {u"L", ArgumentSize::Long},
        {u"I64", ArgumentSize::Wide},  {u"I32", ArgumentSize::Default}, {u"z", ArgumentSize::Pointer},
        {u"t", ArgumentSize::Pointer}, {u"j", ArgumentSize::Wide},
    };
    // Before anything but the letter of a number, this prefix is no prefix.
    if (szFormat[0] == u'I' && std::u16string_view(u"dioxXu").find(szFormat[1]) != std::u16string_view::npos)
    {
        ++szFormat;
        return ArgumentSize::Pointer;
    }
    for (const auto& row : sizes)
    {
        if (Skip(szFormat, row.text))
            return row.size;
    }
    return ArgumentSize::Default;
}
} // namespace

Conversion ReadConversion(const WCHAR*& szFormat, Arguments& arguments)
{
    Conversion conversion;
    ReadFlags(szFormat, conversion);
    ReadWidth(szFormat, arguments, conversion);
    ReadPrecision(szFormat, arguments, conversion);
    conversion.size = ReadSize(szFormat);
    conversion.letter = *szFormat;
    if (*szFormat)
        ++szFormat;
    return conversion;
}
} // namespace platform
