#include "platform/crt/FormatConversion.h"
#include "platform/testing/FaultPoint.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <string_view>
#include <type_traits>

namespace platform
{
namespace
{
// A buffer of fixed size that counts what does not fit any more. Without a buffer it counts only.
class CBoundedText
{
public:
    CBoundedText(WCHAR* szBuffer, std::size_t cchBuffer) : m_szBuffer(szBuffer), m_cchBuffer(cchBuffer)
    {
    }

    template <class Unit>
    void Append(std::basic_string_view<Unit> text)
    {
        const auto cchCopied = std::min(text.size(), Room());
        if (cchCopied > 0)
            std::transform(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(cchCopied), m_szBuffer + m_cchTotal,
                           [](Unit unit) { return static_cast<WCHAR>(static_cast<std::make_unsigned_t<Unit>>(unit)); });
        m_cchTotal += text.size();
    }

    void Fill(std::size_t cch, WCHAR unit)
    {
        if (const auto cchFilled = std::min(cch, Room()); cchFilled > 0)
            std::fill_n(m_szBuffer + m_cchTotal, cchFilled, unit);
        m_cchTotal += cch;
    }

    // Nothing that follows can change the outcome.
    bool HasOverflown() const
    {
        return m_szBuffer && m_cchTotal > m_cchBuffer;
    }

    // The length; -1 when the text did not fit. A text that fills the buffer exactly has no terminator.
    int Finish()
    {
        if (HasOverflown() || m_cchTotal > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            return -1;
        if (Room() > 0)
            m_szBuffer[m_cchTotal] = 0;
        return static_cast<int>(m_cchTotal);
    }

private:
    std::size_t Room() const
    {
        return m_szBuffer && m_cchTotal < m_cchBuffer ? m_cchBuffer - m_cchTotal : 0;
    }

    WCHAR* const m_szBuffer;
    const std::size_t m_cchBuffer;
    std::size_t m_cchTotal = 0;
};

std::size_t Padding(const Conversion& conversion, std::size_t cchText)
{
    return conversion.cchWidth > cchText ? conversion.cchWidth - cchText : 0;
}

template <class Unit>
void AppendText(CBoundedText& output, const Conversion& conversion, const Unit* pText)
{
    static constexpr Unit nullText[] = {'(', 'n', 'u', 'l', 'l', ')', 0};
    if (!pText)
        pText = nullText;
    // Looked at no further than the precision: such a text needs no terminator.
    std::size_t cchText = 0;
    if (conversion.cchPrecision)
        cchText = static_cast<std::size_t>(std::find(pText, pText + *conversion.cchPrecision, Unit{0}) - pText);
    else
        cchText = std::char_traits<Unit>::length(pText);
    const auto cchPadding = Padding(conversion, cchText);
    if (!conversion.bLeft)
        output.Fill(cchPadding, conversion.bZero ? u'0' : u' ');
    output.Append(std::basic_string_view<Unit>(pText, cchText));
    if (conversion.bLeft)
        output.Fill(cchPadding, u' ');
}

std::uint64_t TakeUnsigned(const Conversion& conversion, Arguments& arguments)
{
    switch (conversion.size)
    {
    case ArgumentSize::Wide:
        return va_arg(arguments.list, std::uint64_t);
    case ArgumentSize::Pointer:
        return va_arg(arguments.list, std::size_t);
    case ArgumentSize::Short:
        return static_cast<std::uint16_t>(va_arg(arguments.list, unsigned));
    default:
        return va_arg(arguments.list, std::uint32_t);
    }
}

std::int64_t TakeSigned(const Conversion& conversion, Arguments& arguments)
{
    const std::uint64_t value = TakeUnsigned(conversion, arguments);
    switch (conversion.size)
    {
    case ArgumentSize::Wide:
        return static_cast<std::int64_t>(value);
    case ArgumentSize::Pointer:
        return static_cast<std::intptr_t>(value);
    case ArgumentSize::Short:
        return static_cast<std::int16_t>(value);
    default:
        return static_cast<std::int32_t>(value);
    }
}

struct Radix
{
    unsigned uBase;
    std::u16string_view digits;
};
constexpr Radix decimal{10, u"0123456789"};
constexpr Radix octal{8, u"01234567"};
constexpr Radix lowerHexadecimal{16, u"0123456789abcdef"};
constexpr Radix upperHexadecimal{16, u"0123456789ABCDEF"};

void AppendNumber(CBoundedText& output, const Conversion& conversion, std::u16string_view sign, std::uint64_t value,
                  const Radix& radix)
{
    std::array<char16_t, std::numeric_limits<std::uint64_t>::digits> digits;
    auto first = digits.end();
    for (; value != 0; value /= radix.uBase)
        *--first = radix.digits[value % radix.uBase];
    const std::u16string_view text(first, digits.end());

    // A precision says how many digits there are at least, and then zeros do not fill the width.
    const auto cchDigits = std::max(text.size(), conversion.cchPrecision.value_or(1));
    const auto cchPadding = Padding(conversion, sign.size() + cchDigits);
    const bool bZeros = conversion.bZero && !conversion.bLeft && !conversion.cchPrecision;
    if (!conversion.bLeft && !bZeros)
        output.Fill(cchPadding, u' ');
    output.Append(sign);
    output.Fill(cchDigits - text.size() + (bZeros ? cchPadding : 0), u'0');
    output.Append(text);
    if (conversion.bLeft)
        output.Fill(cchPadding, u' ');
}

void AppendSigned(CBoundedText& output, const Conversion& conversion, std::int64_t value)
{
    const std::u16string_view positive = conversion.bPlus ? u"+" : conversion.bBlank ? u" " : u"";
    // Negated without a sign, as the smallest number has no positive counterpart.
    const auto magnitude = static_cast<std::uint64_t>(value);
    AppendNumber(output, conversion, value < 0 ? u"-" : positive, value < 0 ? 0 - magnitude : magnitude, decimal);
}

void AppendHexadecimal(CBoundedText& output, const Conversion& conversion, std::uint64_t value)
{
    const bool bUpper = conversion.letter != u'x';
    const std::u16string_view prefix = !conversion.bAlternative || value == 0 ? u"" : bUpper ? u"0X" : u"0x";
    AppendNumber(output, conversion, prefix, value, bUpper ? upperHexadecimal : lowerHexadecimal);
}

// The alternative form begins with a zero, be it one that the precision asks for anyway.
void AppendOctal(CBoundedText& output, const Conversion& conversion, std::uint64_t value)
{
    std::size_t cchDigits = 0;
    for (std::uint64_t rest = value; rest != 0; rest /= octal.uBase)
        ++cchDigits;
    const bool bPrefixed = conversion.bAlternative && value != 0 && conversion.cchPrecision.value_or(1) <= cchDigits;
    AppendNumber(output, conversion, bPrefixed ? u"0" : u"", value, octal);
}

template <class Unit>
void AppendCharacter(CBoundedText& output, Conversion conversion, int nCharacter)
{
    const auto unit = static_cast<Unit>(nCharacter);
    // One character even when it is the terminator.
    conversion.cchPrecision.reset();
    const auto cchPadding = Padding(conversion, 1);
    if (!conversion.bLeft)
        output.Fill(cchPadding, conversion.bZero ? u'0' : u' ');
    output.Append(std::basic_string_view<Unit>(&unit, 1));
    if (conversion.bLeft)
        output.Fill(cchPadding, u' ');
}

// Whether the argument of a text conversion is 8-bit text: the capital letter says the opposite of the format's own
// width, and a size overrides both.
bool IsNarrow(const Conversion& conversion)
{
    if (conversion.size == ArgumentSize::Default)
        return conversion.letter == u'S' || conversion.letter == u'C';
    return conversion.size == ArgumentSize::Short;
}

// What is no conversion stands for itself; a format that ends in the middle of one adds nothing.
void AppendConversion(CBoundedText& output, Conversion& conversion, Arguments& arguments)
{
    switch (conversion.letter)
    {
    case u'%':
        output.Fill(1, u'%');
        return;
    case u's':
    case u'S':
        if (IsNarrow(conversion))
            AppendText(output, conversion, va_arg(arguments.list, const char*));
        else
            AppendText(output, conversion, va_arg(arguments.list, const WCHAR*));
        return;
    case u'c':
    case u'C':
        if (IsNarrow(conversion))
            AppendCharacter<char>(output, conversion, va_arg(arguments.list, int));
        else
            AppendCharacter<WCHAR>(output, conversion, va_arg(arguments.list, int));
        return;
    case u'd':
    case u'i':
        AppendSigned(output, conversion, TakeSigned(conversion, arguments));
        return;
    case u'u':
        AppendNumber(output, conversion, {}, TakeUnsigned(conversion, arguments), decimal);
        return;
    case u'o':
        AppendOctal(output, conversion, TakeUnsigned(conversion, arguments));
        return;
    case u'x':
    case u'X':
        AppendHexadecimal(output, conversion, TakeUnsigned(conversion, arguments));
        return;
    case u'p':
        conversion.cchPrecision = 2 * sizeof(void*);
        AppendHexadecimal(output, conversion, reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, void*)));
        return;
    case 0:
        return;
    default:
        output.Fill(1, conversion.letter);
    }
}

int Format(WCHAR* szBuffer, std::size_t cchBuffer, const WCHAR* szFormat, Arguments& arguments)
{
    CBoundedText output(szBuffer, cchBuffer);
    while (*szFormat && !output.HasOverflown())
    {
        const WCHAR* const szLiteral = szFormat;
        while (*szFormat && *szFormat != u'%')
            ++szFormat;
        output.Append(std::u16string_view(szLiteral, static_cast<std::size_t>(szFormat - szLiteral)));
        if (!*szFormat)
            break;
        Conversion conversion = ReadConversion(++szFormat, arguments);
        AppendConversion(output, conversion, arguments);
    }
    return output.Finish();
}

int FormatCall(const char* szFunction, WCHAR* szBuffer, std::size_t cchBuffer, const WCHAR* szFormat, va_list arguments)
{
    if (testing::FaultFires(szFunction))
        return -1;
    if (!szFormat || (!szBuffer && cchBuffer > 0))
    {
        errno = EINVAL;
        return -1;
    }
    Arguments copied;
    va_copy(copied.list, arguments);
    const int cchText = Format(szBuffer, cchBuffer, szFormat, copied);
    va_end(copied.list);
    return cchText;
}
} // namespace
} // namespace platform

using namespace platform;

int _vsnwprintf(WCHAR* szBuffer, std::size_t cchBuffer, const WCHAR* szFormat, va_list arguments)
{
    return FormatCall("_vsnwprintf", szBuffer, cchBuffer, szFormat, arguments);
}

int _snwprintf(WCHAR* szBuffer, std::size_t cchBuffer, const WCHAR* szFormat, ...)
{
    va_list arguments;
    va_start(arguments, szFormat);
    const int cchText = FormatCall("_snwprintf", szBuffer, cchBuffer, szFormat, arguments);
    va_end(arguments);
    return cchText;
}
