// Focus, tab order and groups of a dialog's controls. The engine's lock is held.
#pragma once

#include "platform/user32/Desktop.h"

#include <vector>

namespace platform::user32
{
// In front of the person: visible and enabled.
bool CanTakeInput(const Window& control);

// The tab stop after (or before) the control, around the end; from the first one when pFrom is null. Null when the
// dialog has none.
Window* NextTabStop(Window& dialog, const Window* pFrom, bool bBackward = false);

// The control's group, in template order: from the control that starts it up to the next one that starts another.
std::vector<Window*> GroupOf(const Window& control);
Window* NextInGroup(const Window& control, bool bBackward);

// The keyboard goes to the control and its dialog becomes the thread's active one.
void GiveFocus(Window& control);
Window* FocusOf(const Window& dialog);

// What Enter presses: the push button with the focus, otherwise the one that the template made default. May be null.
Window* DefaultButton(const Window& dialog);

// The control that a letter chooses, looked for behind the one with the focus first. Null when there is none.
Window* FindMnemonic(Window& dialog, WCHAR ch);
} // namespace platform::user32
