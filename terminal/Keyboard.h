// What a person does, as the modal loop takes it from a presenter or from key messages, turned into what the active
// dialog and its controls do.
#pragma once

#include "platform/user32/Desktop.h"

namespace platform::user32
{
struct Input
{
    enum class Kind
    {
        Key,       // uKey, bShift, bAlt; to the control hwnd, the one with the focus when it is null
        Character, // ch, bAlt; likewise
        Press,     // a mouse click on the control hwnd
        Entry,     // a mouse click on entry nEntry of the list in the control hwnd
    };
    Kind kind = Kind::Key;
    UINT uKey = 0;
    WCHAR ch = 0;
    bool bShift = false;
    bool bAlt = false;
    HWND hwnd = nullptr;
    int nEntry = -1;
};

// Keys go to the dialog; mouse clicks to the control that they name, if its dialog lets them.
void HandleInput(EngineLock& lock, HWND hwndDialog, const Input& input);
} // namespace platform::user32
