#include "server/LanguageResources.h"

#include <iterator>

namespace
{
constexpr const WCHAR* szResourceFile = OLESTR("korihvui.dll.mui");
constexpr const WCHAR* szEnglishFile = OLESTR("en-US\\korihvui.dll.mui");

struct LocaleName
{
    WCHAR szName[LOCALE_NAME_MAX_LENGTH];
};

// The file name is bare, so the search starts at the current directory. The language is handed over by value because
// the search may write into it.
HMODULE LoadForLanguage(LocaleName language)
{
    WCHAR szPath[MAX_PATH] = {};
    ULONG cchLanguage = LOCALE_NAME_MAX_LENGTH;
    ULONG cchPath = MAX_PATH;
    ULONGLONG ullEnumerator = 0;
    if (!GetFileMUIPath(0, szResourceFile, language.szName, &cchLanguage, szPath, &cchPath, &ullEnumerator))
        return nullptr;
    return LoadLibraryExW(szPath, nullptr, 0);
}

HMODULE LoadFromSystemDirectory(const LocaleName& language)
{
    WCHAR szCurrent[MAX_PATH] = {};
    WCHAR szSystem[MAX_PATH + 1] = {};
    const DWORD cchCurrent = GetCurrentDirectoryW(static_cast<DWORD>(std::size(szCurrent)), szCurrent);
    // A directory that could not be remembered could not be restored either, so it is not left.
    if (cchCurrent == 0 || cchCurrent >= std::size(szCurrent) ||
        !GetSystemDirectoryW(szSystem, static_cast<UINT>(std::size(szSystem))) || !SetCurrentDirectoryW(szSystem))
        return nullptr;
    const HMODULE hModule = LoadForLanguage(language);
    SetCurrentDirectoryW(szCurrent);
    return hModule;
}
} // namespace

HMODULE LoadLanguageResources()
{
    LocaleName language = {};
    HMODULE hModule = nullptr;
    if (GetUserDefaultLocaleName(language.szName, LOCALE_NAME_MAX_LENGTH) != 0)
    {
        hModule = LoadForLanguage(language);
        if (!hModule)
            hModule = LoadFromSystemDirectory(language);
    }
    return hModule ? hModule : LoadLibraryExW(szEnglishFile, nullptr, 0);
}
