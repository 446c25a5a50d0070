#include "platform/kernel32/Locale.h"

#include "platform/kernel32/Environment.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace platform
{
namespace
{
constexpr const char* szDefaultLocale = "en-US";

struct Language
{
    std::string_view locale;
    WORD wLanguage;
};

// A bare language comes before its countries.
constexpr std::array languages{
    Language{"en", 0x0009},    Language{"en-US", 0x0409}, Language{"en-GB", 0x0809}, Language{"de", 0x0007},
    Language{"de-DE", 0x0407}, Language{"de-CH", 0x0807}, Language{"de-AT", 0x0C07}, Language{"fr", 0x000C},
    Language{"fr-FR", 0x040C}, Language{"es", 0x000A},    Language{"es-ES", 0x0C0A}, Language{"it", 0x0010},
    Language{"it-IT", 0x0410}, Language{"pt-BR", 0x0416}, Language{"pt-PT", 0x0816}, Language{"nl-NL", 0x0413},
    Language{"pl-PL", 0x0415}, Language{"ru-RU", 0x0419}, Language{"ja-JP", 0x0411}, Language{"ko-KR", 0x0412},
    Language{"zh-CN", 0x0804}, Language{"zh-TW", 0x0404},
};

constexpr bool IsAsciiLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

// The name becomes a folder of a path: nothing but letters, digits and hyphens gets there.
bool IsLocaleName(std::string_view name)
{
    const auto language = name.substr(0, name.find('-'));
    return (language.size() == 2 || language.size() == 3) && std::ranges::all_of(language, IsAsciiLetter) &&
           name.size() < LOCALE_NAME_MAX_LENGTH &&
           std::ranges::all_of(name,
                               [](char character) {
                                   return IsAsciiLetter(character) || (character >= '0' && character <= '9') || character == '-';
                               });
}

std::string ConfiguredLocale()
{
    for (const char* szVariable : {"LC_ALL", "LC_MESSAGES", "LANG"})
    {
        const auto value = EnvironmentText(szVariable).value_or("");
        if (!value.empty())
            return value;
    }
    return {};
}
} // namespace

std::string UserLocaleName()
{
    std::string name = ConfiguredLocale();
    // Encoding and variant are no part of the platform's names.
    name.resize(std::min(name.find_first_of(".@"), name.size()));
    std::ranges::replace(name, '_', '-');
    return IsLocaleName(name) ? name : szDefaultLocale;
}

WORD UserLanguage()
{
    const auto found = std::ranges::find(languages, UserLocaleName(), &Language::locale);
    return found == languages.end() ? WORD{0} : found->wLanguage;
}
} // namespace platform

using namespace platform;

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
