// The user's locale, by name and by language identifier.
#pragma once

#include <windows.h>

#include <string>

namespace platform
{
// The name in the platform's form ("de-DE"), from the environment; "en-US" when that names none.
std::string UserLocaleName();

// The language identifier of the user's locale, 0 (neutral) when it is none of the known ones.
WORD UserLanguage();

inline constexpr WORD primaryLanguageMask = 0x3FF;
} // namespace platform
