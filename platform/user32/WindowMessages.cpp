// What windows of every class do with their messages; lists have a file of their own.
#include "platform/user32/ControlStyles.h"
#include "platform/user32/CopyText.h"
#include "platform/user32/Procedures.h"

namespace platform::user32
{
namespace
{
LRESULT ButtonMessage(EngineLock& lock, Window& button, const Message& message)
{
    switch (message.uMessage)
    {
    case BM_GETCHECK:
        return button.uCheck;
    case BM_SETCHECK:
        button.uCheck = IsButton(button, BS_AUTOCHECKBOX) && message.wParam ? BST_CHECKED : BST_UNCHECKED;
        return 0;
    case BM_CLICK: // also of a disabled or hidden button: only a person is kept from pressing those
        ClickButton(lock, button);
        return 0;
    default:
        return TextMessage(button, message);
    }
}

// Closing is cancelling, unless the dialog does not let its Cancel button be pressed.
void Close(const Window& dialog)
{
    const Window* pCancel = CDesktop::Get().FindItem(dialog, IDCANCEL);
    if (!pCancel || !pCancel->Has(WS_DISABLED))
        dialog.pQueue->posted.push_back(
            {dialog.hwnd, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), pCancel ? reinterpret_cast<LPARAM>(pCancel->hwnd) : 0});
}

LRESULT DialogMessage(EngineLock& lock, Window& dialog, const Message& message)
{
    INT_PTR nAnswer = FALSE;
    {
        const DLGPROC pProcedure = dialog.pDialog->pProcedure;
        const CUnlocked unlocked(lock);
        nAnswer = pProcedure(message.hwnd, message.uMessage, message.wParam, message.lParam);
    }
    // What the procedure has dealt with is answered with 0.
    Window* pDialog = nAnswer ? nullptr : CDesktop::Get().Find(message.hwnd);
    if (!pDialog)
        return 0;
    if (message.uMessage != WM_CLOSE)
        return TextMessage(*pDialog, message);
    Close(*pDialog);
    return 0;
}
} // namespace

LRESULT TextMessage(Window& window, const Message& message)
{
    switch (message.uMessage)
    {
    case WM_GETTEXT:
        return CopyText(window.text, reinterpret_cast<LPWSTR>(message.lParam), message.wParam);
    case WM_SETTEXT:
        window.text = message.lParam ? reinterpret_cast<LPCWSTR>(message.lParam) : u"";
        return TRUE;
    default:
        return 0;
    }
}

void Notify(EngineLock& lock, const Window& control, UINT uCode)
{
    const auto wId = static_cast<UINT>(control.nId);
    CallWindow(lock, {control.hwndParent, WM_COMMAND, MAKEWPARAM(wId, uCode), reinterpret_cast<LPARAM>(control.hwnd)});
}

void ClickButton(EngineLock& lock, Window& button)
{
    CDesktop::Get().Root(button).pDialog->hwndFocus = button.hwnd;
    if (IsButton(button, BS_AUTOCHECKBOX))
        button.uCheck = button.uCheck == BST_CHECKED ? BST_UNCHECKED : BST_CHECKED;
    Notify(lock, button, BN_CLICKED);
}

LRESULT CallWindow(EngineLock& lock, const Message& message)
{
    Window* pWindow = CDesktop::Get().Find(message.hwnd);
    if (!pWindow)
        return 0;
    switch (pWindow->windowClass)
    {
    case WindowClass::Dialog:
        return DialogMessage(lock, *pWindow, message);
    case WindowClass::Button:
        return ButtonMessage(lock, *pWindow, message);
    case WindowClass::ComboBox:
        return ComboBoxMessage(*pWindow, message);
    case WindowClass::ListBox:
        return ListBoxMessage(*pWindow, message);
    case WindowClass::Static:
        // The standard icons are known by their numbers alone, which serve as their handles.
        return message.uMessage == STM_GETICON ? pWindow->wIcon : TextMessage(*pWindow, message);
    }
    return 0;
}
} // namespace platform::user32
