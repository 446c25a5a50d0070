// Where a dialog's parts lie in character cells.
#pragma once

#include "terminal/Scene.h"

namespace platform::user32
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

struct DialogCells
{
    Cells frame;                 // with its border, on the screen
    std::vector<Cells> controls; // one for each control of the view, on the screen
};

// Keeps the template's layout: about four dialog units a column and eight a row. Parts that would fall on one another
// only because cells are coarser than units are moved down. The dialog is centred; of one that is larger than the
// screen the part with the focus is on the screen.
DialogCells LayOutDialog(const DialogView& dialog, int cScreenRows, int cScreenColumns);
} // namespace platform::user32
