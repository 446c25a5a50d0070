// A window as the stand-in keeps it: dialogs and the controls that a dialog template can name.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

namespace platform::user32
{
class CThreadQueue;

enum class WindowClass
{
    Dialog,
    Button,
    Static,
    ListBox,
    ComboBox,
};

// A place in dialog units; a dialog's on the screen, a control's in its dialog.
struct DialogUnits
{
    int x = 0;
    int y = 0;
    int cx = 0;
    int cy = 0;
};

struct ListEntry
{
    std::u16string text;
    LPARAM lData = 0;
};

// What only dialogs have.
struct DialogState
{
    DLGPROC pProcedure = nullptr;
    LONG_PTR lUser = 0;
    HWND hwndFocus = nullptr;    // the control that a click has given the keyboard to
    HWND hwndReenable = nullptr; // the owner, when it was enabled before the dialog came up
    bool bEnded = false;
    INT_PTR nResult = 0;
};

struct Window
{
    HWND hwnd = nullptr;
    WindowClass windowClass = WindowClass::Dialog;
    HWND hwndParent = nullptr; // controls
    HWND hwndOwner = nullptr;  // dialogs
    int nId = 0;
    DWORD dwStyle = 0;
    DWORD dwThreadId = 0;
    std::shared_ptr<CThreadQueue> pQueue;
    DialogUnits place;
    std::u16string text;
    std::unique_ptr<DialogState> pDialog;
    WORD wIcon = 0;             // statics: the number of the icon that is shown instead of text
    std::vector<HWND> children; // template order: tab order, and front to back

    UINT uCheck = BST_UNCHECKED;
    std::vector<ListEntry> entries;
    int nSelected = -1;
    int nTop = 0;
    int nSelectedWhenDropped = -1; // what Esc in an open list goes back to
    bool bDropped = false;

    bool Has(DWORD dwFlags) const noexcept
    {
        return (dwStyle & dwFlags) == dwFlags;
    }
};
} // namespace platform::user32
