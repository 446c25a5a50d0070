#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/Locale.h"
#include "platform/kernel32/PathCheck.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>

namespace platform
{
namespace
{
constexpr std::u16string_view languageSuffix = u".mui";
constexpr ULONGLONG enumeratorStart = 0;
constexpr ULONGLONG enumeratorEnd = 1; // one language is asked for, so one file ends the enumeration

bool EndsWithLanguageSuffix(std::u16string_view name)
{
    return name.size() >= languageSuffix.size() &&
           std::ranges::equal(name.substr(name.size() - languageSuffix.size()), languageSuffix,
                              [](char16_t left, char16_t right) { return (left | 0x20) == (right | 0x20); });
}

// <folder>\<language>\<name>, with the suffix that language files have. Nothing when there is no such file.
std::u16string FindLanguageFile(const std::filesystem::path& file, std::u16string_view language)
{
    std::u16string name = FromUtf8(file.filename().native());
    if (!EndsWithLanguageSuffix(name))
        name += languageSuffix;
    const auto found = file.parent_path() / ToUtf8(language) / ToUtf8(name);
    std::error_code ignored;
    return std::filesystem::is_regular_file(found, ignored) ? PlatformPath(found) : std::u16string();
}

// A text for a caller's buffer whose room is given, and whose size (terminator included) is told, by *pcchBuffer. With
// neither a buffer nor room the size alone is told.
bool PutText(std::u16string_view text, PWSTR szBuffer, ULONG* pcchBuffer)
{
    const ULONG cchRoom = *pcchBuffer;
    *pcchBuffer = static_cast<ULONG>(text.size() + 1);
    if (!szBuffer)
        return cchRoom == 0;
    if (cchRoom < *pcchBuffer)
        return false;
    *std::ranges::copy(text, szBuffer).out = u'\0';
    return true;
}
} // namespace
} // namespace platform

using namespace platform;

BOOL WINAPI GetFileMUIPath(DWORD dwFlags, PCWSTR szFilePath, PWSTR szLanguage, PULONG pcchLanguage, PWSTR szFileMUIPath,
                           PULONG pcchFileMUIPath, PULONGLONG pullEnumerator)
{
    return KernelCall("GetFileMUIPath", ERROR_FILE_NOT_FOUND, FALSE,
                      [&]
                      {
                          // The flags choose other kinds of languages and names; only the user's language by name is served.
                          if (dwFlags != 0 || !szFilePath || !pcchLanguage || !pcchFileMUIPath || !pullEnumerator)
                              return FailWith(ERROR_INVALID_PARAMETER, FALSE);
                          if (*pullEnumerator != enumeratorStart)
                              return FailWith(ERROR_NO_MORE_FILES, FALSE);
                          const auto file = CheckPath(szFilePath);
                          if (file.dwError != ERROR_SUCCESS)
                              return FailWith(file.dwError, FALSE);

                          const bool bLanguageGiven = szLanguage && *szLanguage;
                          const std::u16string language =
                              bLanguageGiven ? std::u16string(szLanguage) : FromUtf8(UserLocaleName());
                          const auto found = FindLanguageFile(file.hostPath, language);
                          if (found.empty())
                              return FailWith(ERROR_FILE_NOT_FOUND, FALSE);
                          if (!bLanguageGiven && !PutText(language, szLanguage, pcchLanguage))
                              return FailWith(ERROR_INSUFFICIENT_BUFFER, FALSE);
                          if (!PutText(found, szFileMUIPath, pcchFileMUIPath))
                              return FailWith(ERROR_INSUFFICIENT_BUFFER, FALSE);
                          *pullEnumerator = enumeratorEnd;
                          return TRUE;
                      });
}
