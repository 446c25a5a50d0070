// Text from outside in a form that no terminal takes for orders and no table for rows.
#pragma once

#include <string>
#include <string_view>

// UTF-8 with control characters, marks of the writing direction and what is no character as their numbers: "\x1b", "\n",
// "\u202e". The result is one line. Escaping it again changes nothing, so backslashes stay as they are.
std::string Escaped(std::string_view text);

// The same for a text of several lines: line feeds and tabs stay.
std::string EscapedLines(std::string_view text);

// How wide a text of one line is on a terminal, when its characters take one place each.
std::size_t WidthOf(std::string_view text);
