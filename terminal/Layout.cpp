#include "terminal/Layout.h"

#include "platform/user32/ControlStyles.h"
#include "platform/user32/TextColumns.h"

#include <algorithm>

namespace terminal
{
namespace
{
constexpr int unitsPerColumn = 4;
constexpr int unitsPerRow = 8;
constexpr int comboFieldHeight = 12; // a combo box's own height is that of its open list

// Where the dialog begins along one direction so that it is centred, or its focus in sight.
int Origin(int cDialog, int cScreen, int nFocus)
{
    if (cDialog <= cScreen)
        return (cScreen - cDialog) / 2;
    return std::clamp(cScreen / 2 - nFocus, cScreen - cDialog, 0);
}
} // namespace

Cells FrameOf(const Window& dialog, int cScreenRows, int cScreenColumns)
{
    const Window* pFocus = FocusOf(dialog);
    const Cells focus = pFocus ? CellsOf(*pFocus, {}) : Cells();
    const int cInside = std::max((dialog.place.cx + unitsPerColumn - 1) / unitsPerColumn, ColumnsOf(dialog.text) + 2);
    Cells frame;
    frame.cRows = (dialog.place.cy + unitsPerRow - 1) / unitsPerRow + 2;
    frame.cColumns = cInside + 2;
    frame.nRow = Origin(frame.cRows, cScreenRows, focus.nRow);
    frame.nColumn = Origin(frame.cColumns, cScreenColumns, focus.nColumn);
    return frame;
}

Cells CellsOf(const Window& control, const Cells& frame)
{
    const auto& place = control.place;
    const int nHeight = control.windowClass == WindowClass::ComboBox ? comboFieldHeight : place.cy;
    Cells cells;
    cells.cRows = nHeight < 2 * unitsPerRow ? 1 : nHeight / unitsPerRow;
    // One line stands in the middle of its height, so that a label and its field meet on one row.
    const int nFirst = (place.y + (cells.cRows == 1 ? nHeight : unitsPerRow) / 2) / unitsPerRow;
    // A group box ends with a line of its own, below what it holds.
    if (IsButton(control, BS_GROUPBOX))
        cells.cRows = (place.y + place.cy - unitsPerRow / 2) / unitsPerRow - nFirst + 1;
    cells.nRow = frame.nRow + 1 + nFirst;
    cells.nColumn = frame.nColumn + 1 + (place.x + unitsPerColumn / 2) / unitsPerColumn;
    cells.cColumns = (place.cx + unitsPerColumn / 2) / unitsPerColumn;
    return cells;
}
} // namespace terminal
