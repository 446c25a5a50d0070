// The user's language, and the files that hold a module's resources in it.
#include "platform/kernel32/Environment.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <cctype>

using namespace platform;

namespace
{
constexpr const char* szDefaultLocale = "en-US";

// The name becomes a folder of a path: nothing but letters, digits and hyphens gets there.
bool IsLocaleName(std::string_view name)
{
    const auto cchLanguage = std::min(name.find('-'), name.size());
    const auto isAllowed = [](unsigned char ch) { return ch == '-' || (ch < 0x80 && std::isalnum(ch) != 0); };
    return (cchLanguage == 2 || cchLanguage == 3) && name.size() < LOCALE_NAME_MAX_LENGTH && std::ranges::all_of(name, isAllowed);
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
} // namespace

int WINAPI GetUserDefaultLocaleName(LPWSTR szLocaleName, int cchLocaleName)
{
    return KernelCall("GetUserDefaultLocaleName", ERROR_INSUFFICIENT_BUFFER, 0,
                      [&]
                      {
                          Require(szLocaleName && cchLocaleName >= 0, ERROR_INVALID_PARAMETER);
                          const auto name = FromUtf8(UserLocaleName());
                          Require(static_cast<std::size_t>(cchLocaleName) > name.size(), ERROR_INSUFFICIENT_BUFFER);
                          *std::ranges::copy(name, szLocaleName).out = u'\0';
                          return static_cast<int>(name.size() + 1);
                      });
}

// Serves what the module asks for: <folder>\<language>\<name>, the first file for a language given by its name, where the
// name has the suffix of such files already.
BOOL WINAPI GetFileMUIPath(DWORD dwFlags, PCWSTR szFilePath, PWSTR szLanguage, PULONG pcchLanguage, PWSTR szFileMUIPath,
                           PULONG pcchFileMUIPath, PULONGLONG pullEnumerator)
{
    return KernelCall("GetFileMUIPath", ERROR_FILE_NOT_FOUND, FALSE,
                      [&]
                      {
                          Require(dwFlags == 0 && szLanguage && *szLanguage && pcchLanguage && szFileMUIPath && pcchFileMUIPath &&
                                      pullEnumerator && *pullEnumerator == 0,
                                  ERROR_INVALID_PARAMETER);
                          const auto file = RealPath(szFilePath);
                          const auto inLanguage = file.parent_path() / ToUtf8(szLanguage) / file.filename();
                          std::error_code ignored;
                          Require(std::filesystem::is_regular_file(inLanguage, ignored), ERROR_FILE_NOT_FOUND);
                          const auto found = PlatformPath(inLanguage);
                          Require(*pcchFileMUIPath > found.size(), ERROR_INSUFFICIENT_BUFFER);
                          *std::ranges::copy(found, szFileMUIPath).out = u'\0';
                          *pcchFileMUIPath = static_cast<ULONG>(found.size() + 1);
                          *pullEnumerator = 1;
                      });
}
