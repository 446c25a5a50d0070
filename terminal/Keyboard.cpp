#include "terminal/Keyboard.h"

#include "platform/user32/ControlStyles.h"
#include "platform/user32/DialogNavigation.h"
#include "platform/user32/Procedures.h"
#include "platform/user32/TextOrder.h"

namespace platform::user32
{
namespace
{
bool IsList(const Window& control)
{
    return control.windowClass == WindowClass::ListBox || control.windowClass == WindowClass::ComboBox;
}

void Command(EngineLock& lock, HWND hwndDialog, int nId, const Window* pControl)
{
    if (pControl && pControl->Has(WS_DISABLED))
        return;
    CallWindow(lock, {hwndDialog, WM_COMMAND, MAKEWPARAM(static_cast<UINT>(nId), BN_CLICKED),
                      pControl ? reinterpret_cast<LPARAM>(pControl->hwnd) : 0});
}

// Leaving an open list closes it with what is selected.
void MoveFocus(EngineLock& lock, Window& dialog, Window* pTo)
{
    if (!pTo)
        return;
    const HWND hwndTo = pTo->hwnd;
    if (Window* pFrom = FocusOf(dialog); pFrom && pFrom != pTo && pFrom->bDropped)
        DropList(lock, *pFrom, false, true);
    if (Window* pControl = CDesktop::Get().Find(hwndTo))
        GiveFocus(*pControl);
}

void MoveInList(EngineLock& lock, Window& list, UINT uKey)
{
    const int nLast = static_cast<int>(list.entries.size()) - 1;
    switch (uKey)
    {
    case VK_UP:
        return SelectEntry(lock, list, list.nSelected - 1);
    case VK_DOWN:
        return SelectEntry(lock, list, list.nSelected + 1);
    case VK_PRIOR:
        return SelectEntry(lock, list, list.nSelected - VisibleEntries(list.place));
    case VK_NEXT:
        return SelectEntry(lock, list, list.nSelected + VisibleEntries(list.place));
    case VK_HOME:
        return SelectEntry(lock, list, 0);
    case VK_END:
        return SelectEntry(lock, list, nLast);
    default:
        return;
    }
}

void MoveInGroup(EngineLock& lock, Window& dialog, const Window& control, bool bBackward)
{
    Window* pNext = NextInGroup(control, bBackward);
    if (!pNext || pNext == &control)
        return;
    if (pNext->windowClass == WindowClass::Button && ButtonType(pNext->dwStyle) == BS_AUTORADIOBUTTON)
        return ClickButton(lock, *pNext);
    MoveFocus(lock, dialog, pNext);
}

void HandleArrow(EngineLock& lock, Window& dialog, Window& focus, const Input& input)
{
    const bool bVertical = input.uKey == VK_UP || input.uKey == VK_DOWN;
    const bool bText = TakesText(focus.windowClass, focus.dwStyle);
    if (focus.windowClass == WindowClass::ComboBox && bVertical && input.bAlt)
        return DropList(lock, focus, !focus.bDropped, true);
    if (bText && !(bVertical && IsList(focus)) && input.uKey != VK_PRIOR && input.uKey != VK_NEXT)
        return MoveCaret(lock, focus, input.uKey);
    if (IsList(focus))
    {
        const UINT uSideways = input.uKey == VK_LEFT ? VK_UP : VK_DOWN;
        return MoveInList(lock, focus, input.uKey == VK_LEFT || input.uKey == VK_RIGHT ? uSideways : input.uKey);
    }
    if (bVertical || input.uKey == VK_LEFT || input.uKey == VK_RIGHT)
        MoveInGroup(lock, dialog, focus, input.uKey == VK_UP || input.uKey == VK_LEFT);
}

void HandleKey(EngineLock& lock, Window& dialog, Window* pFocus, const Input& input)
{
    const bool bDropped = pFocus && pFocus->bDropped;
    switch (input.uKey)
    {
    case VK_TAB:
        return MoveFocus(lock, dialog, NextTabStop(dialog, FocusOf(dialog), input.bShift));
    case VK_RETURN:
        if (bDropped)
            return DropList(lock, *pFocus, false, true);
        if (const Window* pButton = DefaultButton(dialog))
            return Command(lock, dialog.hwnd, pButton->nId, pButton);
        return Command(lock, dialog.hwnd, IDOK, nullptr);
    case VK_ESCAPE:
        if (bDropped)
            return DropList(lock, *pFocus, false, false);
        return Command(lock, dialog.hwnd, IDCANCEL, CDesktop::Get().FindItem(dialog, IDCANCEL));
    case VK_F4:
        if (pFocus && pFocus->windowClass == WindowClass::ComboBox)
            DropList(lock, *pFocus, !bDropped, true);
        return;
    default:
        if (pFocus && !pFocus->Has(WS_DISABLED))
            HandleArrow(lock, dialog, *pFocus, input);
    }
}

void HandleMnemonic(EngineLock& lock, Window& dialog, WCHAR ch)
{
    Window* pControl = FindMnemonic(dialog, ch);
    if (!pControl)
        return;
    const HWND hwnd = pControl->hwnd;
    MoveFocus(lock, dialog, pControl);
    Window* pFocused = CDesktop::Get().Find(hwnd);
    if (pFocused && pFocused->windowClass == WindowClass::Button)
        ClickButton(lock, *pFocused);
}

// Letters in a list without a field go to the next entry that begins with them.
void SelectByLetter(EngineLock& lock, Window& list, WCHAR ch)
{
    const int cEntries = static_cast<int>(list.entries.size());
    for (int i = 1; i <= cEntries; ++i)
    {
        const int nEntry = (list.nSelected + i) % cEntries;
        const auto& text = list.entries[static_cast<std::size_t>(nEntry)].text;
        if (!text.empty() && FoldCase(text.front()) == FoldCase(ch))
            return SelectEntry(lock, list, nEntry);
    }
}

void HandleCharacter(EngineLock& lock, Window& dialog, Window* pFocus, const Input& input)
{
    if (input.bAlt || !pFocus)
        return HandleMnemonic(lock, dialog, input.ch);
    if (TakesText(pFocus->windowClass, pFocus->dwStyle))
        return TypeCharacter(lock, *pFocus, input.ch);
    if (input.ch == u' ' && pFocus->windowClass == WindowClass::Button)
    {
        if (CanTakeInput(*pFocus))
            ClickButton(lock, *pFocus);
        return;
    }
    if (IsList(*pFocus))
        return SelectByLetter(lock, *pFocus, input.ch);
    HandleMnemonic(lock, dialog, input.ch);
}

void HandlePress(EngineLock& lock, Window& dialog, Window& control)
{
    const HWND hwnd = control.hwnd;
    if (control.windowClass == WindowClass::Static)
        return;
    MoveFocus(lock, dialog, &control);
    Window* pControl = CDesktop::Get().Find(hwnd);
    if (!pControl)
        return;
    if (pControl->windowClass == WindowClass::Button)
        return ClickButton(lock, *pControl);
    if (pControl->windowClass == WindowClass::ComboBox)
        DropList(lock, *pControl, !pControl->bDropped, true);
}

void HandleEntryPress(EngineLock& lock, Window& dialog, Window& list, int nEntry)
{
    const HWND hwnd = list.hwnd;
    MoveFocus(lock, dialog, &list);
    if (Window* pList = CDesktop::Get().Find(hwnd))
        SelectEntry(lock, *pList, nEntry);
    if (Window* pList = CDesktop::Get().Find(hwnd); pList && pList->bDropped)
        DropList(lock, *pList, false, true);
}
} // namespace

void HandleInput(EngineLock& lock, HWND hwndDialog, const Input& input)
{
    auto& desktop = CDesktop::Get();
    Window* pTarget = desktop.Find(input.hwnd ? input.hwnd : hwndDialog);
    if (!pTarget)
        return;
    Window& dialog = desktop.Root(*pTarget);
    if (dialog.Has(WS_DISABLED))
        return;
    Window* pControl = pTarget == &dialog ? FocusOf(dialog) : pTarget;
    if (input.kind == Input::Kind::Key)
        return HandleKey(lock, dialog, pControl, input);
    if (input.kind == Input::Kind::Character)
        return HandleCharacter(lock, dialog, pControl, input);
    if (pTarget != pControl || !CanTakeInput(*pControl))
        return;
    if (input.kind == Input::Kind::Press)
        return HandlePress(lock, dialog, *pControl);
    HandleEntryPress(lock, dialog, *pControl, input.nEntry);
}
} // namespace platform::user32
