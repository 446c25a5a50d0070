#include "terminal/Layout.h"

#include "platform/user32/ControlStyles.h"
#include "platform/user32/Mnemonic.h"

#include <algorithm>

namespace platform::user32
{
namespace
{
constexpr int unitsPerColumn = 4;
constexpr int unitsPerRow = 8;
constexpr int comboFieldHeight = 12; // a combo box's own height is that of its open list

bool IsGroupBox(const ControlView& control)
{
    return control.windowClass == WindowClass::Button && ButtonType(control.dwStyle) == BS_GROUPBOX;
}

// What the marks around a control's text take, as in "[x] " or "[ OK ]"; 0 for one whose width is its own.
int MarksWidth(const ControlView& control)
{
    return control.windowClass == WindowClass::Button && !IsGroupBox(control) ? 4 : 0;
}

int Columns(const ControlView& control)
{
    const int cOwn = std::max(1, (control.place.cx + unitsPerColumn / 2) / unitsPerColumn);
    const int cMarks = MarksWidth(control);
    return cMarks ? std::max(cOwn, cMarks + static_cast<int>(ReadMnemonic(control.text).text.size())) : cOwn;
}

// A part that takes rows of its own: a control, or one of the two lines of a group box.
struct Part
{
    std::size_t uControl;
    bool bBottomLine;
    int nCentre; // in dialog units, of its first row
    int nTop;
    int nBottom;
    Cells cells;
};

Part MakePart(const ControlView& control, std::size_t uControl, bool bBottomLine)
{
    const auto& place = control.place;
    Part part{uControl, bBottomLine, 0, place.y, place.y + place.cy, {}};
    part.cells.nColumn = std::max(0, (place.x + unitsPerColumn / 2) / unitsPerColumn);
    part.cells.cColumns = Columns(control);
    const bool bList = control.windowClass == WindowClass::ListBox;
    if (IsGroupBox(control))
    {
        part.nTop = bBottomLine ? part.nBottom - 1 : part.nTop;
        part.nBottom = part.nTop + 1;
        part.nCentre = bBottomLine ? part.nBottom - unitsPerRow / 2 : part.nTop + unitsPerRow / 2;
        return part;
    }
    if (control.windowClass == WindowClass::ComboBox)
        part.nBottom = part.nTop + comboFieldHeight;
    const int nHeight = part.nBottom - part.nTop;
    part.cells.cRows = bList ? VisibleEntries(place) : nHeight < 2 * unitsPerRow ? 1 : nHeight / unitsPerRow;
    // One line stands in the middle of its height, so that a label and its field meet on one row.
    part.nCentre = part.nTop + (part.cells.cRows == 1 ? nHeight / 2 : unitsPerRow / 2);
    return part;
}

bool Collide(const Part& part, const Part& placed)
{
    const auto& left = part.cells;
    const auto& right = placed.cells;
    const bool bRows = left.nRow < right.nRow + right.cRows && right.nRow < left.nRow + left.cRows;
    const bool bColumns = left.nColumn < right.nColumn + right.cColumns && right.nColumn < left.nColumn + left.cColumns;
    const bool bMeant = part.nTop < placed.nBottom && placed.nTop < part.nBottom; // they overlap in the template too
    return bRows && bColumns && !bMeant;
}

std::vector<Part> PlaceParts(const DialogView& dialog)
{
    std::vector<Part> parts;
    for (std::size_t i = 0; i < dialog.controls.size(); ++i)
    {
        parts.push_back(MakePart(dialog.controls[i], i, false));
        if (IsGroupBox(dialog.controls[i]))
            parts.push_back(MakePart(dialog.controls[i], i, true));
    }
    std::stable_sort(parts.begin(), parts.end(),
                     [](const Part& left, const Part& right) { return left.nCentre < right.nCentre; });
    int nShift = 0;
    for (auto part = parts.begin(); part != parts.end(); ++part)
    {
        part->cells.nRow = std::max(0, part->nCentre / unitsPerRow) + nShift;
        while (std::any_of(parts.begin(), part, [&](const Part& placed) { return Collide(*part, placed); }))
        {
            ++part->cells.nRow;
            ++nShift; // whatever stands below keeps its distance
        }
    }
    return parts;
}

// Where the dialog begins along one direction so that it is centred, or its focus in sight.
int Origin(int cDialog, int cScreen, int nFocus)
{
    if (cDialog <= cScreen)
        return (cScreen - cDialog) / 2;
    return std::clamp(cScreen / 2 - nFocus, cScreen - cDialog, 0);
}
} // namespace

DialogCells LayOutDialog(const DialogView& dialog, int cScreenRows, int cScreenColumns)
{
    DialogCells layout;
    layout.controls.resize(dialog.controls.size());
    int cRows = (dialog.place.cy + unitsPerRow - 1) / unitsPerRow;
    int cColumns = std::max((dialog.place.cx + unitsPerColumn - 1) / unitsPerColumn, static_cast<int>(dialog.title.size()) + 2);
    for (const auto& part : PlaceParts(dialog))
    {
        Cells& cells = layout.controls[part.uControl];
        if (part.bBottomLine)
            cells.cRows = part.cells.nRow - cells.nRow + 1;
        else
            cells = part.cells;
        cRows = std::max(cRows, part.cells.nRow + part.cells.cRows);
        cColumns = std::max(cColumns, part.cells.nColumn + part.cells.cColumns);
    }
    Cells focus;
    for (std::size_t i = 0; i < dialog.controls.size(); ++i)
        if (dialog.controls[i].hwnd == dialog.hwndFocus)
            focus = layout.controls[i];
    layout.frame.cRows = cRows + 2;
    layout.frame.cColumns = cColumns + 2;
    layout.frame.nRow = Origin(layout.frame.cRows, cScreenRows, focus.nRow + 1);
    layout.frame.nColumn = Origin(layout.frame.cColumns, cScreenColumns, focus.nColumn + 1);
    for (auto& cells : layout.controls)
    {
        cells.nRow += layout.frame.nRow + 1;
        cells.nColumn += layout.frame.nColumn + 1;
    }
    return layout;
}
} // namespace platform::user32
