// Dialogs and their controls as a terminal shows them.
#pragma once

#include "terminal/Layout.h"

#include <optional>

namespace terminal
{
// Where a mouse click means something: a control, or an entry of a list.
struct ClickTarget
{
    Cells cells;
    HWND hwnd = nullptr;
    int nEntry = -1;
};

// What a drawn dialog has for the person's hands.
struct Touch
{
    std::vector<ClickTarget> targets; // what was drawn last is on top
    std::optional<Cells> cursor;      // the blinking one
};

Touch DrawDialog(const Window& dialog, bool bActive);
} // namespace terminal
