#include "host/Escaped.h"

#include "values/Utf8Text.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace
{
// Terminals obey the control characters, of either range. The others break lines or turn the writing direction, so that a
// text reads as another one, or are no characters, which no XML document may hold.
struct Range
{
    WCHAR chFirst;
    WCHAR chLast;
};
constexpr Range escapedRanges[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x061C, 0x061C}, {0x200E, 0x200F},
                                   {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFFFE, 0xFFFF}};

struct ShortForm
{
    WCHAR ch;
    CWideView text;
};
constexpr ShortForm shortForms[] = {{OLESTR('\n'), OLESTR("\\n")}, {OLESTR('\r'), OLESTR("\\r")}, {OLESTR('\t'), OLESTR("\\t")}};

bool IsEscaped(WCHAR ch)
{
    return std::any_of(std::begin(escapedRanges), std::end(escapedRanges),
                       [ch](const Range& range) { return ch >= range.chFirst && ch <= range.chLast; });
}

CWideString EscapeOf(WCHAR ch)
{
    for (const ShortForm& form : shortForms)
        if (form.ch == ch)
            return CWideString(form.text);
    char szNumber[8];
    std::snprintf(szNumber, sizeof(szNumber), ch <= 0xFF ? "\\x%02x" : "\\u%04x", static_cast<unsigned>(ch));
    return WideOf(szNumber);
}

std::string EscapedBut(std::string_view text, CWideView kept)
{
    CWideString strEscaped;
    for (const WCHAR ch : WideOf(text))
        if (IsEscaped(ch) && kept.find(ch) == CWideView::npos)
            strEscaped += EscapeOf(ch);
        else
            strEscaped += ch;
    return Utf8Of(strEscaped);
}
} // namespace

std::string Escaped(std::string_view text)
{
    return EscapedBut(text, {});
}

std::string EscapedLines(std::string_view text)
{
    return EscapedBut(text, OLESTR("\n\t"));
}

std::size_t WidthOf(std::string_view text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}
