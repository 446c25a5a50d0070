// Dialogs and their controls as a terminal shows them.
#pragma once

#include "terminal/Canvas.h"

namespace platform::user32
{
// Where a mouse click means something: a control, or an entry of a list.
struct ClickTarget
{
    Cells cells;
    HWND hwnd = nullptr; // null: covered by a dialog
    int nEntry = -1;
};

// Draws the dialogs back to front and tells where to click; what was drawn last is found last.
std::vector<ClickTarget> DrawScene(CTerminalCanvas& canvas, const Scene& scene);
} // namespace platform::user32
