#include "terminal/Canvas.h"

#include <algorithm>
#include <wchar.h>

namespace terminal
{
namespace
{
// The character that begins at uAt, which moves behind it.
wchar_t NextCharacter(std::u16string_view text, std::size_t& uAt)
{
    const unsigned uUnit = text[uAt++];
    const bool bPair = (uUnit & 0xFC00u) == 0xD800u && uAt < text.size() && (text[uAt] & 0xFC00u) == 0xDC00u;
    if (bPair)
        return static_cast<wchar_t>(0x10000u + ((uUnit & 0x3FFu) << 10) + (text[uAt++] & 0x3FFu));
    return static_cast<wchar_t>((uUnit & 0xF800u) == 0xD800u ? 0xFFFDu : uUnit);
}

// The character so often that it fills a row of the cells.
std::u16string Row(const Cells& cells, char16_t ch)
{
    return std::u16string(static_cast<std::size_t>(std::max(0, cells.cColumns)), ch);
}
} // namespace

int Text(const Cells& cells, std::u16string_view text, attr_t ink, int nMarked)
{
    int nDrawn = 0;
    for (std::size_t uAt = 0; uAt < text.size();)
    {
        attr_set(static_cast<int>(uAt) == nMarked ? ink | A_UNDERLINE : ink, 0, nullptr);
        wchar_t ch = NextCharacter(text, uAt);
        int cWidth = wcwidth(ch);
        if (cWidth == 0)
            continue; // a combining mark without a cell of its own
        if (cWidth < 0)
        {
            ch = L' ';
            cWidth = 1;
        }
        if (nDrawn + cWidth > cells.cColumns)
            break;
        // At the screen's edge a wide character would go on in the next row.
        if (cells.nColumn + nDrawn + cWidth <= getmaxx(stdscr))
            mvaddnwstr(cells.nRow, cells.nColumn + nDrawn, &ch, 1);
        nDrawn += cWidth;
    }
    return nDrawn;
}

void Fill(Cells cells, attr_t ink)
{
    for (; cells.cRows > 0; --cells.cRows, ++cells.nRow)
        Text(cells, Row(cells, u' '), ink);
}

void Sides(const Cells& cells, attr_t ink)
{
    for (int nRow = cells.nRow; nRow < cells.nRow + cells.cRows; ++nRow)
        for (const int nColumn : {cells.nColumn, cells.nColumn + cells.cColumns - 1})
            Text({nRow, nColumn}, u"\u2502", ink);
}

void Frame(const Cells& cells, attr_t ink)
{
    Sides(cells, ink);
    auto line = Row(cells, u'\u2500');
    line.front() = u'\u250C';
    line.back() = u'\u2510';
    Text(cells, line, ink);
    line.front() = u'\u2514';
    line.back() = u'\u2518';
    Text({cells.nRow + cells.cRows - 1, cells.nColumn, 1, cells.cColumns}, line, ink);
}
} // namespace terminal
