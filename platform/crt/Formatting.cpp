// Printf-style formatting of UTF-16 text, for the conversions in use: %s, %d, %u, %x, %X, %p and %%, the numbers with a width
// that may begin with a zero. Any other conversion fails.
#include "platform/testing/FaultPoint.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <string_view>

namespace platform
{
namespace
{
constexpr bool IsDigit(WCHAR unit)
{
    return unit >= u'0' && unit <= u'9';
}

// A buffer of fixed size that counts what does not fit any more.
class CBoundedText
{
public:
    CBoundedText(WCHAR* szBuffer, std::size_t cchBuffer) : m_szBuffer(szBuffer), m_cchBuffer(cchBuffer)
    {
    }

    void Append(std::u16string_view text)
    {
        if (m_cchTotal < m_cchBuffer)
            text.copy(m_szBuffer + m_cchTotal, m_cchBuffer - m_cchTotal);
        m_cchTotal += text.size();
    }

    // The length; -1 when the text did not fit. A text that fills the buffer exactly has no terminator.
    int Finish()
    {
        if (m_cchTotal < m_cchBuffer)
            m_szBuffer[m_cchTotal] = 0;
        return m_cchTotal > m_cchBuffer ? -1 : static_cast<int>(m_cchTotal);
    }

private:
    WCHAR* const m_szBuffer;
    const std::size_t m_cchBuffer;
    std::size_t m_cchTotal = 0;
};

struct Width
{
    std::size_t cch = 0;
    bool bZeros = false;
};

// No column of a log is wider.
constexpr std::size_t cchWidthMax = 99;

void AppendNumber(CBoundedText& output, const Width& width, bool bNegative, std::uint64_t value, unsigned uBase,
                  WCHAR firstLetter)
{
    std::array<WCHAR, cchWidthMax> text;
    auto first = text.end();
    const auto pad = [&](std::size_t cch, WCHAR unit)
    {
        while (static_cast<std::size_t>(text.end() - first) < cch)
            *--first = unit;
    };
    do
    {
        // By numbers that are known when this is compiled: a division by any other takes many times as long.
        const std::uint64_t rest = uBase == 10 ? value / 10 : value / 16;
        const auto uDigit = static_cast<unsigned>(value - rest * uBase);
        *--first = static_cast<WCHAR>(uDigit < 10 ? u'0' + uDigit : firstLetter + (uDigit - 10));
        value = rest;
    } while (value != 0);
    if (width.bZeros && width.cch > 0)
        pad(width.cch - (bNegative ? 1 : 0), u'0');
    if (bNegative)
        *--first = u'-';
    pad(width.cch, u' ');
    output.Append({first, text.end()});
}

// Variable arguments by reference: a va_list cannot be handed on that way itself where it is an array.
struct Arguments
{
    va_list list;
};

// False for what is not in use.
bool AppendConversion(CBoundedText& output, const Width& width, WCHAR letter, Arguments& arguments)
{
    switch (letter)
    {
    case u's':
    {
        const WCHAR* const szText = va_arg(arguments.list, const WCHAR*);
        output.Append(szText ? szText : u"(null)");
        return width.cch == 0;
    }
    case u'd':
    {
        const std::int64_t nValue = va_arg(arguments.list, int);
        AppendNumber(output, width, nValue < 0, static_cast<std::uint64_t>(nValue < 0 ? -nValue : nValue), 10, 0);
        return true;
    }
    case u'u':
    case u'x':
    case u'X':
        AppendNumber(output, width, false, va_arg(arguments.list, unsigned), letter == u'u' ? 10 : 16,
                     letter == u'x' ? u'a' : u'A');
        return true;
    case u'p':
        AppendNumber(output, {2 * sizeof(void*), true}, false, reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, void*)),
                     16, u'A');
        return width.cch == 0;
    case u'%':
        output.Append(u"%");
        return width.cch == 0;
    default:
        return false;
    }
}

int Fail()
{
    errno = EINVAL;
    return -1;
}

int Format(WCHAR* szBuffer, std::size_t cchBuffer, std::u16string_view format, Arguments& arguments)
{
    CBoundedText output(szBuffer, cchBuffer);
    for (;;)
    {
        const auto nPercent = format.find(u'%');
        output.Append(format.substr(0, nPercent));
        if (nPercent == format.npos)
            return output.Finish();
        format.remove_prefix(nPercent + 1);
        Width width{0, format.starts_with(u'0')};
        for (; !format.empty() && IsDigit(format.front()); format.remove_prefix(1))
            width.cch = std::min<std::size_t>(width.cch * 10 + (format.front() - u'0'), cchWidthMax);
        if (format.empty() || !AppendConversion(output, width, format.front(), arguments))
            return Fail();
        format.remove_prefix(1);
    }
}

int FormatCall(const char* szFunction, WCHAR* szBuffer, std::size_t cchBuffer, const WCHAR* szFormat, va_list arguments)
{
    if (testing::FaultFires(szFunction))
        return -1;
    if (!szFormat || !szBuffer)
        return Fail();
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
