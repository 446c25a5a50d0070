// Texts on a terminal, where a character takes no column, one or two.
#pragma once

#include <cstddef>
#include <locale.h>
#include <string_view>

namespace platform::user32
{
// UTF-8, which terminals take today, for the scope of calls that go by the locale: the program's own stays as it is.
class CTerminalLocale
{
public:
    CTerminalLocale();
    ~CTerminalLocale()
    {
        uselocale(m_before);
    }
    CTerminalLocale(const CTerminalLocale&) = delete;
    CTerminalLocale& operator=(const CTerminalLocale&) = delete;

private:
    const locale_t m_before;
};

struct ShownCharacter
{
    wchar_t ch = L' ';
    int cColumns = 1;
};

// The character that begins at uAt, which moves behind it, as a terminal shows it: a control character is a blank, and a
// combining mark has no column of its own.
ShownCharacter NextCharacter(std::u16string_view text, std::size_t& uAt);

int ColumnsOf(std::u16string_view text);

// As many of the text's units, from its front, as whole characters fit into the columns.
std::size_t UnitsWithin(std::u16string_view text, int cColumns);
} // namespace platform::user32
