// What windows do with messages. Everything here runs on the window's own thread with the engine's lock held; the lock
// is given up while the program's dialog procedure runs, so every window may be gone after a call.
#pragma once

#include "platform/user32/Desktop.h"

namespace platform::user32
{
// Lets the window's procedure answer the message; 0 when there is no such window.
LRESULT CallWindow(EngineLock& lock, const Message& message);

LRESULT ComboBoxMessage(Window& combo, const Message& message);
LRESULT ListBoxMessage(Window& list, const Message& message);
// Text in and out: what every class does the same way.
LRESULT TextMessage(Window& window, const Message& message);

// Tells the control's dialog; the last thing to do with the control, see above.
void Notify(EngineLock& lock, const Window& control, UINT uCode);

// What a person does with a control, as against the program's messages: these notify the dialog.
void ClickButton(EngineLock& lock, Window& button);
void SelectEntry(EngineLock& lock, Window& list, int nEntry);
// What a person does with a combo box, of which the dialog is not told. bAccept tells between Enter and Esc in an open list.
void DropList(Window& combo, bool bDrop, bool bAccept);
inline constexpr WCHAR backspace = 8;
void TypeCharacter(Window& combo, WCHAR ch);
} // namespace platform::user32
