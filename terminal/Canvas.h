// Drawing on the terminal's screen, cut off at its edges.
#pragma once

#include "terminal/Layout.h"

#include <string_view>

namespace platform::user32
{
struct Ink
{
    bool bReverse = false;
    bool bDim = false;
    bool bBold = false;
    bool bUnderline = false;
};

class CTerminalCanvas
{
public:
    // The screen's size now; it changes when the person resizes the terminal.
    int Rows() const;
    int Columns() const;

    void Clear();
    void Fill(const Cells& cells, Ink ink = {});
    // A frame of lines along the cells' edge.
    void Frame(const Cells& cells, Ink ink = {});
    // At most cColumns wide; the number of columns drawn. The letter at nMarked is underlined. Control characters show
    // as blanks.
    int Text(int nRow, int nColumn, int cColumns, std::u16string_view text, Ink ink = {}, int nMarked = -1);
    // A vertical line's cell, for the edges of a list.
    void Edge(int nRow, int nColumn, Ink ink = {});

    // The blinking cursor, shown after the next refresh; without a call there is none.
    void ShowCursor(int nRow, int nColumn);
    void Refresh();

private:
    bool IsInside(int nRow, int nColumn) const;

    int m_nCursorRow = -1;
    int m_nCursorColumn = -1;
};
} // namespace platform::user32
