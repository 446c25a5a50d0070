#include "platform/kernel32/Unicode.h"
#include "platform/kernel32/KernelCall.h"

#include <utf8.h>

#include <algorithm>
#include <type_traits>

namespace platform
{
namespace
{
constexpr char16_t replacement = 0xFFFD;

constexpr bool IsHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool IsLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

// Texts are given with their length: nobody here has one of unknown length converted.
template <class Unit, class Other>
bool AreTextArguments(UINT uCodePage, const Unit* pText, int nUnits, const Other* pBuffer, int nRoom)
{
    return uCodePage == CP_UTF8 && pText && nUnits > 0 && nRoom >= 0 && (pBuffer || nRoom == 0);
}

// Whether the unit is a character by itself, and the same in both forms.
constexpr auto isAscii = [](auto unit) { return static_cast<std::make_unsigned_t<decltype(unit)>>(unit) < 0x80; };

bool IsValid(std::string_view text)
{
    const auto other = std::find_if_not(text.begin(), text.end(), isAscii);
    return utf8::is_valid(other, text.end());
}

// Copies a converted text out, or tells its size when the caller gave no room.
template <class Unit>
int ReturnConverted(const std::basic_string<Unit>& text, Unit* pBuffer, int nUnits)
{
    Require(nUnits == 0 || static_cast<std::size_t>(nUnits) >= text.size(), ERROR_INSUFFICIENT_BUFFER);
    if (nUnits != 0)
        std::copy(text.begin(), text.end(), pBuffer);
    return static_cast<int>(text.size());
}

// Most of every text is ASCII, so only the runs of other characters are converted. Neither form has a character of which a
// part could be taken for ASCII.
template <class Target, class Unit, class Convert>
std::basic_string<Target> ConvertRuns(std::basic_string_view<Unit> text, Convert convert)
{
    std::basic_string<Target> result;
    result.reserve(text.size());
    for (auto run = text.begin(); run != text.end();)
    {
        const auto other = std::find_if_not(run, text.end(), isAscii);
        const auto nEnd = result.size();
        result.resize(nEnd + static_cast<std::size_t>(other - run));
        std::transform(run, other, result.begin() + static_cast<std::ptrdiff_t>(nEnd),
                       [](Unit unit) { return static_cast<Target>(unit); });
        run = std::find_if(other, text.end(), isAscii);
        if (other != run)
            result += convert(std::basic_string_view<Unit>(other, run));
    }
    return result;
}
} // namespace

std::u16string WellFormed(std::u16string_view text)
{
    std::u16string result(text);
    for (std::size_t i = 0; i < result.size(); ++i)
    {
        if (IsHighSurrogate(result[i]) && i + 1 < result.size() && IsLowSurrogate(result[i + 1]))
            ++i;
        else if (IsHighSurrogate(result[i]) || IsLowSurrogate(result[i]))
            result[i] = replacement;
    }
    return result;
}

std::string ToUtf8(std::u16string_view text)
{
    return ConvertRuns<char>(text, [](std::u16string_view run) { return utf8::utf16to8(WellFormed(run)); });
}

std::u16string FromUtf8(std::string_view text)
{
    return ConvertRuns<char16_t>(text, [](std::string_view run) { return utf8::utf8to16(utf8::replace_invalid(run)); });
}
} // namespace platform

using namespace platform;

int WINAPI MultiByteToWideChar(UINT uCodePage, DWORD dwFlags, LPCSTR pText, int cbText, LPWSTR szWide, int cchWide)
{
    return KernelCall("MultiByteToWideChar", ERROR_NO_UNICODE_TRANSLATION, 0,
                      [&]
                      {
                          Require(AreTextArguments(uCodePage, pText, cbText, szWide, cchWide), ERROR_INVALID_PARAMETER);
                          Require((dwFlags & ~MB_ERR_INVALID_CHARS) == 0, ERROR_INVALID_FLAGS);
                          const std::string_view text(pText, static_cast<std::size_t>(cbText));
                          Require(dwFlags == 0 || IsValid(text), ERROR_NO_UNICODE_TRANSLATION);
                          return ReturnConverted(FromUtf8(text), szWide, cchWide);
                      });
}

int WINAPI WideCharToMultiByte(UINT uCodePage, DWORD dwFlags, LPCWSTR szWide, int cchWide, LPSTR pText, int cbText,
                               LPCSTR szDefault, LPBOOL pbUsedDefault)
{
    return KernelCall("WideCharToMultiByte", ERROR_NO_UNICODE_TRANSLATION, 0,
                      [&]
                      {
                          // UTF-8 has a form for every character: a default character makes no sense for it and is refused.
                          Require(!szDefault && !pbUsedDefault, ERROR_INVALID_PARAMETER);
                          Require(AreTextArguments(uCodePage, szWide, cchWide, pText, cbText), ERROR_INVALID_PARAMETER);
                          Require((dwFlags & ~WC_ERR_INVALID_CHARS) == 0, ERROR_INVALID_FLAGS);
                          const std::u16string_view text(szWide, static_cast<std::size_t>(cchWide));
                          Require(dwFlags == 0 || WellFormed(text) == text, ERROR_NO_UNICODE_TRANSLATION);
                          return ReturnConverted(ToUtf8(text), pText, cbText);
                      });
}
