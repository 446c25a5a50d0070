#include "terminal/Canvas.h"

#include "terminal/Curses.h"

#include <wchar.h>

namespace platform::user32
{
namespace
{
void Use(Ink ink)
{
    attr_t attributes = A_NORMAL;
    attributes |= ink.bReverse ? A_REVERSE : 0;
    attributes |= ink.bDim ? A_DIM : 0;
    attributes |= ink.bBold ? A_BOLD : 0;
    attributes |= ink.bUnderline ? A_UNDERLINE : 0;
    attr_set(attributes, 0, nullptr);
}

// The character that begins at uAt, which moves behind it.
wchar_t NextCharacter(std::u16string_view text, std::size_t& uAt)
{
    const unsigned uUnit = text[uAt++];
    const bool bPair = (uUnit & 0xFC00u) == 0xD800u && uAt < text.size() && (text[uAt] & 0xFC00u) == 0xDC00u;
    if (bPair)
        return static_cast<wchar_t>(0x10000u + ((uUnit & 0x3FFu) << 10) + (text[uAt++] & 0x3FFu));
    return static_cast<wchar_t>((uUnit & 0xF800u) == 0xD800u ? 0xFFFDu : uUnit);
}
} // namespace

int CTerminalCanvas::Rows() const
{
    return getmaxy(stdscr);
}

int CTerminalCanvas::Columns() const
{
    return getmaxx(stdscr);
}

bool CTerminalCanvas::IsInside(int nRow, int nColumn) const
{
    return nRow >= 0 && nRow < Rows() && nColumn >= 0 && nColumn < Columns();
}

void CTerminalCanvas::Clear()
{
    erase();
    m_nCursorRow = -1;
}

void CTerminalCanvas::Fill(const Cells& cells, Ink ink)
{
    Use(ink);
    for (int nRow = cells.nRow; nRow < cells.nRow + cells.cRows; ++nRow)
        for (int nColumn = cells.nColumn; nColumn < cells.nColumn + cells.cColumns; ++nColumn)
            if (IsInside(nRow, nColumn))
                mvaddch(nRow, nColumn, ' ');
}

void CTerminalCanvas::Frame(const Cells& cells, Ink ink)
{
    Use(ink);
    const int nTop = cells.nRow, nBottom = cells.nRow + cells.cRows - 1;
    const int nLeft = cells.nColumn, nRight = cells.nColumn + cells.cColumns - 1;
    const auto put = [this](int nRow, int nColumn, const cchar_t* pCharacter)
    {
        if (IsInside(nRow, nColumn))
            mvadd_wch(nRow, nColumn, pCharacter);
    };
    for (int nColumn = nLeft + 1; nColumn < nRight; ++nColumn)
    {
        put(nTop, nColumn, WACS_HLINE);
        put(nBottom, nColumn, WACS_HLINE);
    }
    for (int nRow = nTop + 1; nRow < nBottom; ++nRow)
    {
        put(nRow, nLeft, WACS_VLINE);
        put(nRow, nRight, WACS_VLINE);
    }
    put(nTop, nLeft, WACS_ULCORNER);
    put(nTop, nRight, WACS_URCORNER);
    put(nBottom, nLeft, WACS_LLCORNER);
    put(nBottom, nRight, WACS_LRCORNER);
}

void CTerminalCanvas::Edge(int nRow, int nColumn, Ink ink)
{
    Use(ink);
    if (IsInside(nRow, nColumn))
        mvadd_wch(nRow, nColumn, WACS_VLINE);
}

int CTerminalCanvas::Text(int nRow, int nColumn, int cColumns, std::u16string_view text, Ink ink, int nMarked)
{
    int nDrawn = 0;
    for (std::size_t uAt = 0; uAt < text.size();)
    {
        Ink letter = ink;
        letter.bUnderline = ink.bUnderline || static_cast<int>(uAt) == nMarked;
        wchar_t ch = NextCharacter(text, uAt);
        int cWidth = wcwidth(ch);
        if (cWidth == 0)
            continue; // a combining mark without a cell of its own
        if (cWidth < 0)
        {
            ch = L' ';
            cWidth = 1;
        }
        if (nDrawn + cWidth > cColumns)
            break;
        if (IsInside(nRow, nColumn + nDrawn) && IsInside(nRow, nColumn + nDrawn + cWidth - 1))
        {
            Use(letter);
            mvaddnwstr(nRow, nColumn + nDrawn, &ch, 1);
        }
        nDrawn += cWidth;
    }
    return nDrawn;
}

void CTerminalCanvas::ShowCursor(int nRow, int nColumn)
{
    m_nCursorRow = nRow;
    m_nCursorColumn = nColumn;
}

void CTerminalCanvas::Refresh()
{
    const bool bCursor = m_nCursorRow >= 0 && IsInside(m_nCursorRow, m_nCursorColumn);
    curs_set(bCursor ? 1 : 0);
    if (bCursor)
        move(m_nCursorRow, m_nCursorColumn);
    refresh();
}
} // namespace platform::user32
