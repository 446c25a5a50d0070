#include "platform/user32/CopyText.h"
#include "platform/user32/Procedures.h"

namespace platform::user32
{
LRESULT TextMessage(Window& window, const Message& message)
{
    switch (message.uMessage)
    {
    case WM_GETTEXT:
        return CopyText(window.text, reinterpret_cast<LPWSTR>(message.lParam), message.wParam);
    case WM_SETTEXT:
        window.text = message.lParam ? reinterpret_cast<LPCWSTR>(message.lParam) : u"";
        window.uCaret = 0;
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

LRESULT CallWindow(EngineLock& lock, const Message& message)
{
    Window* pWindow = CDesktop::Get().Find(message.hwnd);
    if (!pWindow)
        return 0;
    switch (pWindow->windowClass)
    {
    case WindowClass::Dialog:
        return DialogMessage(lock, message);
    case WindowClass::Button:
        return ButtonMessage(lock, *pWindow, message);
    case WindowClass::ComboBox:
        return ComboBoxMessage(lock, *pWindow, message);
    case WindowClass::ListBox:
        return ListBoxMessage(lock, *pWindow, message);
    case WindowClass::Edit:
        return EditMessage(lock, *pWindow, message);
    case WindowClass::Static:
        // The standard icons are known by their numbers alone, which serve as their handles.
        if (message.uMessage == STM_GETICON)
            return pWindow->wIcon;
        break;
    }
    return TextMessage(*pWindow, message);
}
} // namespace platform::user32
