#include "platform/user32/ControlStyles.h"
#include "platform/user32/DialogNavigation.h"
#include "platform/user32/Procedures.h"

#include <algorithm>

namespace platform::user32
{
namespace
{
UINT HighestCheck(DWORD dwStyle)
{
    switch (ButtonType(dwStyle))
    {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return 1;
    case BS_3STATE:
    case BS_AUTO3STATE:
        return 2;
    default:
        return 0;
    }
}

void SetCheck(Window& button, WPARAM wCheck)
{
    button.uCheck = static_cast<UINT>(std::min<WPARAM>(wCheck, HighestCheck(button.dwStyle)));
    // Of a group of radio buttons the Tab key visits the checked one.
    if (IsRadioButton(button.dwStyle))
        button.dwStyle = button.uCheck ? button.dwStyle | WS_TABSTOP : button.dwStyle & ~WS_TABSTOP;
}

void CheckAutomatically(Window& button)
{
    switch (ButtonType(button.dwStyle))
    {
    case BS_AUTOCHECKBOX:
    case BS_AUTO3STATE:
        SetCheck(button, (button.uCheck + 1) % (HighestCheck(button.dwStyle) + 1));
        break;
    case BS_AUTORADIOBUTTON:
        for (Window* pOther : GroupOf(button))
            if (pOther->windowClass == WindowClass::Button && ButtonType(pOther->dwStyle) == BS_AUTORADIOBUTTON)
                SetCheck(*pOther, pOther == &button ? BST_CHECKED : BST_UNCHECKED);
        break;
    default:
        break;
    }
}
} // namespace

void ClickButton(EngineLock& lock, Window& button)
{
    if (ButtonType(button.dwStyle) == BS_GROUPBOX)
        return;
    GiveFocus(button);
    CheckAutomatically(button);
    Notify(lock, button, BN_CLICKED);
}

LRESULT ButtonMessage(EngineLock& lock, Window& button, const Message& message)
{
    switch (message.uMessage)
    {
    case BM_GETCHECK:
        return button.uCheck;
    case BM_SETCHECK:
        SetCheck(button, message.wParam);
        return 0;
    case BM_CLICK: // also of a disabled or hidden button: only a person is kept from pressing those
        ClickButton(lock, button);
        return 0;
    default:
        return TextMessage(button, message);
    }
}
} // namespace platform::user32
