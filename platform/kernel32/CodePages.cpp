#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>

namespace
{
// The text behind a pointer and a count, where -1 stands for "up to and with its terminator".
template <class Unit>
std::basic_string_view<Unit> TextOf(const Unit* pText, int nUnits)
{
    if (nUnits >= 0)
        return {pText, static_cast<std::size_t>(nUnits)};
    const std::basic_string_view<Unit> text(pText);
    return {pText, text.size() + 1};
}

// Copies a converted text out, or tells its size when the caller gave no room.
template <class Unit>
int ReturnConverted(const std::basic_string<Unit>& text, Unit* pBuffer, int nUnits)
{
    if (nUnits == 0)
        return static_cast<int>(text.size());
    if (static_cast<std::size_t>(nUnits) < text.size())
        return platform::FailWith(ERROR_INSUFFICIENT_BUFFER, 0);
    std::copy(text.begin(), text.end(), pBuffer);
    return static_cast<int>(text.size());
}

template <class Unit, class Other>
bool AreTextArguments(UINT uCodePage, const Unit* pText, int nUnits, const Other* pBuffer, int nRoom)
{
    return uCodePage == CP_UTF8 && pText && nUnits != 0 && nUnits >= -1 && nRoom >= 0 && (pBuffer || nRoom == 0);
}
} // namespace

using namespace platform;

int WINAPI MultiByteToWideChar(UINT uCodePage, DWORD dwFlags, LPCSTR pText, int cbText, LPWSTR szWide, int cchWide)
{
    return KernelCall("MultiByteToWideChar", ERROR_NO_UNICODE_TRANSLATION, 0,
                      [&]
                      {
                          if (!AreTextArguments(uCodePage, pText, cbText, szWide, cchWide))
                              return FailWith(ERROR_INVALID_PARAMETER, 0);
                          if ((dwFlags & ~MB_ERR_INVALID_CHARS) != 0)
                              return FailWith(ERROR_INVALID_FLAGS, 0);
                          bool bWellFormed = true;
                          const auto wide = FromUtf8(TextOf(pText, cbText), &bWellFormed);
                          if (!bWellFormed && (dwFlags & MB_ERR_INVALID_CHARS) != 0)
                              return FailWith(ERROR_NO_UNICODE_TRANSLATION, 0);
                          return ReturnConverted(wide, szWide, cchWide);
                      });
}

int WINAPI WideCharToMultiByte(UINT uCodePage, DWORD dwFlags, LPCWSTR szWide, int cchWide, LPSTR pText, int cbText,
                               LPCSTR szDefault, LPBOOL pbUsedDefault)
{
    return KernelCall("WideCharToMultiByte", ERROR_NO_UNICODE_TRANSLATION, 0,
                      [&]
                      {
                          // UTF-8 has a form for every character: a default character makes no sense for it and is refused.
                          if (!AreTextArguments(uCodePage, szWide, cchWide, pText, cbText) || szDefault || pbUsedDefault)
                              return FailWith(ERROR_INVALID_PARAMETER, 0);
                          if ((dwFlags & ~WC_ERR_INVALID_CHARS) != 0)
                              return FailWith(ERROR_INVALID_FLAGS, 0);
                          bool bWellFormed = true;
                          const auto text = ToUtf8(TextOf(szWide, cchWide), &bWellFormed);
                          if (!bWellFormed && (dwFlags & WC_ERR_INVALID_CHARS) != 0)
                              return FailWith(ERROR_NO_UNICODE_TRANSLATION, 0);
                          return ReturnConverted(text, pText, cbText);
                      });
}
