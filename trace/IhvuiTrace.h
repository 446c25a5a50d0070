// The one call that traces. The exact texts stand at the call, so that a search for a line of the log ends there.
#pragma once

#include "values/WideText.h"

#include <type_traits>

inline constexpr LONG traceLevelError = 1;
inline constexpr LONG traceLevelInfo = 2;

namespace TraceFormat
{
template <class Argument>
constexpr bool Matches(WCHAR conversion)
{
    if (conversion == OLESTR('s'))
        return std::is_same_v<Argument, const WCHAR*> || std::is_same_v<Argument, WCHAR*>;
    if (conversion == OLESTR('p'))
        return std::is_pointer_v<Argument>;
    if (conversion == OLESTR('u') || conversion == OLESTR('d') || conversion == OLESTR('x') || conversion == OLESTR('X'))
        return std::is_integral_v<Argument> && sizeof(Argument) == sizeof(DWORD);
    return false;
}

// Reaching this while a format is checked ends the compilation, with the reason in its name.
void FormatDoesNotMatchItsArguments();

// The conversion behind the next percent sign from szFormat on; 0 at the end. Moves szFormat behind it.
constexpr WCHAR NextConversion(const WCHAR*& szFormat)
{
    while (*szFormat != WCHAR{} && *szFormat != OLESTR('%'))
        ++szFormat;
    if (*szFormat == WCHAR{})
        return WCHAR{};
    ++szFormat;
    return *szFormat == WCHAR{} ? WCHAR{} : *szFormat++;
}

template <class Argument>
constexpr void CheckNext(const WCHAR*& szFormat)
{
    if (!Matches<Argument>(NextConversion(szFormat)))
        FormatDoesNotMatchItsArguments();
}

// A format whose conversions were held against the arguments at compile time: compilers do not check wide formats.
template <class... Arguments>
class CChecked
{
public:
    template <std::size_t cchFormat>
    // NOLINTNEXTLINE(google-explicit-constructor): the literal at the call is meant to convert.
    consteval CChecked(const WCHAR (&szFormat)[cchFormat]) : m_szFormat(szFormat)
    {
        const WCHAR* szRest = szFormat;
        (CheckNext<Arguments>(szRest), ...);
        if (NextConversion(szRest) != WCHAR{})
            FormatDoesNotMatchItsArguments();
    }

    const WCHAR* Text() const
    {
        return m_szFormat;
    }

private:
    const WCHAR* m_szFormat;
};

void Write(LONG lLevel, const WCHAR* szFormat, ...);
} // namespace TraceFormat

// Traces one message: printf-style, with %s for UTF-16 text (null prints as "(null)"). A message beyond 4095 code units
// is cut there. Any thread, while the module is loaded; nothing that fails in it reaches the caller.
template <class... Arguments>
void IhvuiTrace(LONG lLevel, TraceFormat::CChecked<std::type_identity_t<Arguments>...> format, Arguments... arguments)
{
    TraceFormat::Write(lLevel, format.Text(), arguments...);
}
