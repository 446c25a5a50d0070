// Fields that take text from the keyboard: edit controls and the field of a combo box.
#include "platform/user32/ControlStyles.h"
#include "platform/user32/Procedures.h"

#include <algorithm>

namespace platform::user32
{
namespace
{
constexpr WCHAR backspace = 8;

bool MayType(const Window& control)
{
    const bool bReadOnly = control.windowClass == WindowClass::Edit && control.Has(ES_READONLY);
    return TakesText(control.windowClass, control.dwStyle) && !control.Has(WS_DISABLED) && !bReadOnly;
}

void TextChanged(EngineLock& lock, Window& control)
{
    if (control.windowClass == WindowClass::Edit)
        return Notify(lock, control, EN_CHANGE);
    control.nSelected = -1; // typed text is no entry of the list
    Notify(lock, control, CBN_EDITCHANGE);
}
} // namespace

void TypeCharacter(EngineLock& lock, Window& control, WCHAR ch)
{
    if (!MayType(control))
        return;
    control.uCaret = std::min(control.uCaret, control.text.size());
    if (ch == backspace)
    {
        if (control.uCaret == 0)
            return;
        control.text.erase(--control.uCaret, 1);
        return TextChanged(lock, control);
    }
    const bool bDigit = ch >= u'0' && ch <= u'9';
    if (ch < u' ' || (control.windowClass == WindowClass::Edit && control.Has(ES_NUMBER) && !bDigit))
        return;
    control.text.insert(control.uCaret++, 1, ch);
    TextChanged(lock, control);
}

void MoveCaret(EngineLock& lock, Window& control, UINT uKey)
{
    control.uCaret = std::min(control.uCaret, control.text.size());
    switch (uKey)
    {
    case VK_LEFT:
        control.uCaret -= control.uCaret > 0;
        break;
    case VK_RIGHT:
        control.uCaret += control.uCaret < control.text.size();
        break;
    case VK_HOME:
        control.uCaret = 0;
        break;
    case VK_END:
        control.uCaret = control.text.size();
        break;
    case VK_DELETE:
        if (!MayType(control) || control.uCaret == control.text.size())
            return;
        control.text.erase(control.uCaret, 1);
        return TextChanged(lock, control);
    default:
        break;
    }
}

LRESULT EditMessage(EngineLock& lock, Window& edit, const Message& message)
{
    switch (message.uMessage)
    {
    case WM_CHAR:
        TypeCharacter(lock, edit, static_cast<WCHAR>(message.wParam));
        return 0;
    case WM_KEYDOWN:
        MoveCaret(lock, edit, static_cast<UINT>(message.wParam));
        return 0;
    case WM_SETTEXT:
        TextMessage(edit, message);
        Notify(lock, edit, EN_CHANGE);
        return TRUE;
    default:
        return TextMessage(edit, message);
    }
}
} // namespace platform::user32
