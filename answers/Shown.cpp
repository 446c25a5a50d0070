#include "answers/Shown.h"

#include <cstdio>

namespace answers
{
namespace
{
std::string Formatted(const char* szFormat, unsigned long long uValue)
{
    char szText[24];
    std::snprintf(szText, sizeof(szText), szFormat, uValue);
    return szText;
}
} // namespace

std::string Shown(CWideView text)
{
    std::string shown;
    for (const WCHAR ch : text)
    {
        const bool bPrints = ch >= ' ' && ch < 0x7F && ch != '\\';
        shown += bPrints ? std::string(1, static_cast<char>(ch)) : Formatted("\\u%04llX", ch);
    }
    return shown;
}

std::string Shown(std::string_view bytes)
{
    CWideString text;
    for (const char ch : bytes)
        text += static_cast<WCHAR>(static_cast<unsigned char>(ch));
    return Shown(text);
}

std::string ShownBytes(std::string_view bytes)
{
    std::string shown;
    for (const char ch : bytes)
        shown += Formatted("%02llX", static_cast<unsigned char>(ch));
    return shown.empty() ? "none" : shown;
}

std::string ShownHex(std::uint32_t uValue)
{
    return Formatted("0x%08llX", uValue);
}

std::string ShownStatus(LONG lStatus)
{
    return lStatus == 0 ? "ok" : "error " + std::to_string(lStatus);
}

std::string ShownSuccess(BOOL bSucceeded, const std::string& more)
{
    const DWORD dwError = GetLastError();
    return bSucceeded ? (more.empty() ? "ok" : "ok, " + more) : "failed, error " + std::to_string(dwError);
}

CWideView Touched(CWideView buffer)
{
    return buffer.substr(0, buffer.find_last_not_of(OLESTR('#')) + 1);
}
} // namespace answers
