// The user's language, and the files that hold a module's resources in it.
#include "platform/kernel32/Environment.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>

using namespace platform;

namespace
{
constexpr const char* szDefaultLocale = "en-US";

// The name becomes a folder of a path: nothing but letters, digits and hyphens gets there.
bool IsLocaleName(std::string_view name)
{
    const auto cchLanguage = std::min(name.find('-'), name.size());
    return (cchLanguage == 2 || cchLanguage == 3) && name.size() < LOCALE_NAME_MAX_LENGTH &&
           std::ranges::all_of(name,
                               [](char character)
                               {
                                   const char lower = static_cast<char>(character | 0x20);
                                   return (lower >= 'a' && lower <= 'z') || (character >= '0' && character <= '9') ||
                                          character == '-';
                               });
}

// In the platform's form ("de-DE"), from the environment.
std::string UserLocaleName()
{
    std::string name;
    for (const char* szVariable : {"LANG", "LC_MESSAGES", "LC_ALL"}) // the last one that is set decides
    {
        if (const auto value = EnvironmentText(szVariable).value_or(""); !value.empty())
            name = value;
    }
    // Encoding and variant are no part of the platform's names.
    name.resize(std::min(name.find_first_of(".@"), name.size()));
    std::ranges::replace(name, '_', '-');
    return IsLocaleName(name) ? name : szDefaultLocale;
}

// <folder>\<language>\<name>. Nothing when there is no such file.
std::u16string FindLanguageFile(const std::filesystem::path& file, LPCWSTR szLanguage)
{
    const auto found = file.parent_path() / ToUtf8(szLanguage) / file.filename();
    std::error_code ignored;
    return std::filesystem::is_regular_file(found, ignored) ? PlatformPath(found) : std::u16string();
}
} // namespace

int WINAPI GetUserDefaultLocaleName(LPWSTR szLocaleName, int cchLocaleName)
{
    return KernelCall("GetUserDefaultLocaleName", ERROR_INSUFFICIENT_BUFFER, 0,
                      [&]
                      {
                          if (!szLocaleName || cchLocaleName < 0)
                              return FailWith(ERROR_INVALID_PARAMETER, 0);
                          const auto name = FromUtf8(UserLocaleName());
                          if (static_cast<std::size_t>(cchLocaleName) <= name.size())
                              return FailWith(ERROR_INSUFFICIENT_BUFFER, 0);
                          *std::ranges::copy(name, szLocaleName).out = u'\0';
                          return static_cast<int>(name.size() + 1);
                      });
}

// Serves what the module asks for: the first file for a language given by its name, of a name that has the suffix of
// such files already.
BOOL WINAPI GetFileMUIPath(DWORD dwFlags, PCWSTR szFilePath, PWSTR szLanguage, PULONG pcchLanguage, PWSTR szFileMUIPath,
                           PULONG pcchFileMUIPath, PULONGLONG pullEnumerator)
{
    return KernelCall("GetFileMUIPath", ERROR_FILE_NOT_FOUND, FALSE,
                      [&]
                      {
                          if (dwFlags != 0 || !szLanguage || !*szLanguage || !pcchLanguage || !szFileMUIPath ||
                              !pcchFileMUIPath || !pullEnumerator || *pullEnumerator != 0)
                              return FailWith(ERROR_INVALID_PARAMETER, FALSE);
                          const auto file = CheckPath(szFilePath);
                          if (file.dwError != ERROR_SUCCESS)
                              return FailWith(file.dwError, FALSE);
                          const auto found = FindLanguageFile(file.hostPath, szLanguage);
                          if (found.empty())
                              return FailWith(ERROR_FILE_NOT_FOUND, FALSE);
                          if (*pcchFileMUIPath <= found.size())
                              return FailWith(ERROR_INSUFFICIENT_BUFFER, FALSE);
                          *std::ranges::copy(found, szFileMUIPath).out = u'\0';
                          *pcchFileMUIPath = static_cast<ULONG>(found.size() + 1);
                          *pullEnumerator = 1;
                          return TRUE;
                      });
}
