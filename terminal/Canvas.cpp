#include "terminal/Canvas.h"

#include "platform/user32/TextColumns.h"

#include <algorithm>

namespace terminal
{
namespace
{
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
        const auto shown = NextCharacter(text, uAt);
        if (shown.cColumns == 0)
            continue;
        if (nDrawn + shown.cColumns > cells.cColumns)
            break;
        // At the screen's edge a wide character would go on in the next row.
        if (cells.nColumn + nDrawn + shown.cColumns <= getmaxx(stdscr))
            mvaddnwstr(cells.nRow, cells.nColumn + nDrawn, &shown.ch, 1);
        nDrawn += shown.cColumns;
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
