// Where a dialog's parts lie in character cells.
#pragma once

#include "terminal/Navigation.h"

namespace terminal
{
struct Cells
{
    int nRow = 0;
    int nColumn = 0;
    int cRows = 1;
    int cColumns = 1;

    bool Contains(int nAtRow, int nAtColumn) const noexcept
    {
        return nAtRow >= nRow && nAtRow < nRow + cRows && nAtColumn >= nColumn && nAtColumn < nColumn + cColumns;
    }
};

// The dialog with its border, centred on the screen; of one that is larger than the screen the control with the focus is
// in sight.
Cells FrameOf(const Window& dialog, int cScreenRows, int cScreenColumns);

// A control in its dialog's frame. Keeps the template's layout: four dialog units a column and eight a row.
Cells CellsOf(const Window& control, const Cells& frame);
} // namespace terminal
