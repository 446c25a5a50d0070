// What a person does at the terminal, turned into what the dialog and its controls do.
#pragma once

#include "terminal/Navigation.h"

namespace terminal
{
inline constexpr int keyEscape = 27;

// One of: a key, a character, a click.
struct Input
{
    int nKey = 0; // as the terminal library numbers it; Tab, Enter and Esc by their control characters
    WCHAR ch = 0;
    bool bAlt = false;
    HWND hwndClicked = nullptr;
    int nEntry = -1; // of the list that is clicked on
};

void HandleInput(EngineLock& lock, const Window& dialog, const Input& input);
} // namespace terminal
