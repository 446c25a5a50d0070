// Which dialog and which of its controls a person means. The engine's lock is held.
#pragma once

#include "platform/user32/Desktop.h"

namespace terminal
{
using namespace platform::user32;

// What the thread shows, back to front; the last one has the keyboard.
std::vector<Window*> OpenDialogs(const CThreadQueue& queue);

// In front of the person: visible and enabled.
bool CanTakeInput(const Window& control);

// The tab stop after (or before) the control, around the end; from the first one when pFrom is null. Null when the
// dialog has none.
Window* NextTabStop(const Window& dialog, const Window* pFrom, bool bBackward = false);

// The control with the keyboard: the one that it was given to, as long as that can take it, or else the first tab stop.
Window* FocusOf(const Window& dialog);
// Null changes nothing. A list that loses the focus is closed with what is selected.
void GiveFocus(Window* pControl);

// What Enter presses: the push button with the focus, otherwise the one that the template made default. May be null.
Window* DefaultButton(const Window& dialog);

// The control that a letter chooses, looked for behind the one with the focus first. Null when there is none.
Window* FindMnemonic(const Window& dialog, WCHAR ch);
} // namespace terminal
