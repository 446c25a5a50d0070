// Drawing on the terminal's screen. What lies beyond its edges is left out.
#pragma once

#include "terminal/Curses.h"
#include "terminal/Layout.h"

#include <string_view>

namespace terminal
{
// On the cells' first row; the number of columns drawn. The letter at nMarked is underlined. Control characters show as
// blanks.
int Text(const Cells& cells, std::u16string_view text, attr_t ink, int nMarked = -1);
void Fill(Cells cells, attr_t ink);
// Lines along the cells' edges: the left and the right one, or all four.
void Sides(const Cells& cells, attr_t ink);
void Frame(const Cells& cells, attr_t ink);
} // namespace terminal
