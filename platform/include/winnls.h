// Locale names, language resource search, code page conversion.
#pragma once

#include "windef.h"

#define LOCALE_NAME_MAX_LENGTH 85
#define CP_UTF8 65001u
inline constexpr DWORD MB_ERR_INVALID_CHARS = 8;
inline constexpr DWORD WC_ERR_INVALID_CHARS = 0x80;

extern "C"
{
    int WINAPI GetUserDefaultLocaleName(LPWSTR szLocaleName, int cchLocaleName);
    BOOL WINAPI GetFileMUIPath(DWORD dwFlags, PCWSTR szFilePath, PWSTR szLanguage, PULONG pcchLanguage, PWSTR szFileMUIPath,
                               PULONG pcchFileMUIPath, PULONGLONG pullEnumerator);
    int WINAPI MultiByteToWideChar(UINT uCodePage, DWORD dwFlags, LPCSTR pText, int cbText, LPWSTR szWide, int cchWide);
    int WINAPI WideCharToMultiByte(UINT uCodePage, DWORD dwFlags, LPCWSTR szWide, int cchWide, LPSTR pText, int cbText,
                                   LPCSTR szDefault, LPBOOL pbUsedDefault);
}
