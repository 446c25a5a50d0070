// The open dialogs of a thread as values, so that they can be drawn without the engine's lock.
#pragma once

#include "platform/user32/Desktop.h"

namespace platform::user32
{
struct ControlView
{
    HWND hwnd = nullptr;
    WindowClass windowClass = WindowClass::Static;
    DWORD dwStyle = 0;
    DialogUnits place;
    std::u16string text;
    WORD wIcon = 0;
    UINT uCheck = 0;
    std::vector<std::u16string> entries;
    int nSelected = -1;
    int nTop = 0;
    bool bDropped = false;
    std::size_t uCaret = 0;
};

struct DialogView
{
    HWND hwnd = nullptr;
    DialogUnits place;
    std::u16string title;
    bool bEnabled = true;
    HWND hwndFocus = nullptr;
    HWND hwndDefault = nullptr;
    std::vector<ControlView> controls; // template order, hidden ones left out
};

// Back to front; the last one has the keyboard.
using Scene = std::vector<DialogView>;

Scene CaptureScene(const CThreadQueue& queue);
} // namespace platform::user32
