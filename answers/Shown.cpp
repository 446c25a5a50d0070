#include "answers/Shown.h"

#include <cstdio>
#include <type_traits>

namespace answers
{
namespace
{
template <class View>
std::string ShownCharacters(View text)
{
    std::string shown;
    for (const auto ch : text)
    {
        const auto uUnit = static_cast<unsigned>(static_cast<std::make_unsigned_t<decltype(ch)>>(ch));
        if (uUnit >= ' ' && uUnit < 0x7F && uUnit != '\\')
        {
            shown += static_cast<char>(uUnit);
            continue;
        }
        char szEscape[8];
        std::snprintf(szEscape, sizeof(szEscape), "\\u%04X", uUnit & 0xFFFF);
        shown += szEscape;
    }
    return shown;
}
} // namespace

std::string Shown(CWideView text)
{
    return ShownCharacters(text);
}

std::string Shown(std::string_view bytes)
{
    return ShownCharacters(bytes);
}

std::string ShownBytes(std::string_view bytes)
{
    std::string shown;
    for (const char ch : bytes)
    {
        char szByte[3];
        std::snprintf(szByte, sizeof(szByte), "%02X", static_cast<unsigned>(static_cast<unsigned char>(ch)));
        shown += szByte;
    }
    return shown.empty() ? "none" : shown;
}

std::string ShownHex(std::uint64_t uValue)
{
    char szValue[20];
    std::snprintf(szValue, sizeof(szValue), "0x%08llX", static_cast<unsigned long long>(uValue));
    return szValue;
}

std::string ShownStatus(LONG lStatus)
{
    return lStatus == 0 ? "ok" : "error " + std::to_string(lStatus);
}

std::string ShownSuccess(BOOL bSucceeded)
{
    const DWORD dwError = GetLastError();
    return bSucceeded ? "ok" : "failed, error " + std::to_string(dwError);
}

CWideView Touched(CWideView buffer)
{
    return buffer.substr(0, buffer.find_last_not_of(OLESTR('#')) + 1);
}
} // namespace answers
