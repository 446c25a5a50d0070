#include "terminal/Keyboard.h"

#include "platform/user32/ControlStyles.h"
#include "platform/user32/Procedures.h"
#include "terminal/Curses.h"
#include "terminal/Mnemonic.h"

namespace terminal
{
namespace
{
void MoveInList(EngineLock& lock, Window& list, int nKey)
{
    switch (nKey)
    {
    case KEY_UP:
        return SelectEntry(lock, list, list.nSelected - 1);
    case KEY_DOWN:
        return SelectEntry(lock, list, list.nSelected + 1);
    case KEY_PPAGE:
        return SelectEntry(lock, list, list.nSelected - VisibleEntries(list));
    case KEY_NPAGE:
        return SelectEntry(lock, list, list.nSelected + VisibleEntries(list));
    case KEY_HOME:
        return SelectEntry(lock, list, 0);
    case KEY_END:
        return SelectEntry(lock, list, static_cast<int>(list.entries.size()));
    default:
        return;
    }
}

void Press(EngineLock& lock, const Window* pButton)
{
    if (pButton && !pButton->Has(WS_DISABLED))
        Notify(lock, *pButton, BN_CLICKED);
}

void HandleKey(EngineLock& lock, const Window& dialog, Window& focus, int nKey)
{
    const bool bBackward = nKey == KEY_BTAB || nKey == KEY_UP || nKey == KEY_LEFT;
    switch (nKey)
    {
    case '\t':
    case KEY_BTAB:
        return GiveFocus(NextTabStop(dialog, &focus, bBackward));
    case '\r':
        return focus.bDropped ? DropList(focus, false, true) : Press(lock, DefaultButton(dialog));
    case keyEscape:
        if (focus.bDropped)
            return DropList(focus, false, false);
        CallWindow(lock, {dialog.hwnd, WM_CLOSE, 0, 0});
        return;
    case KEY_F(1):
        CallWindow(lock, {dialog.hwnd, WM_HELP, 0, 0});
        return;
    case KEY_F(4):
        if (focus.windowClass == WindowClass::ComboBox)
            DropList(focus, !focus.bDropped, true);
        return;
    default:
        if (focus.windowClass != WindowClass::Button)
            return MoveInList(lock, focus, nKey);
        if (bBackward || nKey == KEY_DOWN || nKey == KEY_RIGHT)
            GiveFocus(NextTabStop(dialog, &focus, bBackward));
    }
}

void HandleMnemonic(EngineLock& lock, const Window& dialog, WCHAR ch)
{
    Window* pControl = FindMnemonic(dialog, ch);
    GiveFocus(pControl);
    if (pControl && pControl->windowClass == WindowClass::Button)
        ClickButton(lock, *pControl);
}

// Letters in a list without a field go to the next entry that begins with them.
void SelectByLetter(EngineLock& lock, Window& list, WCHAR ch)
{
    const int cEntries = static_cast<int>(list.entries.size());
    for (int i = 1; i <= cEntries; ++i)
    {
        const int nEntry = (list.nSelected + i) % cEntries;
        const auto& text = list.entries[static_cast<std::size_t>(nEntry)].text;
        if (!text.empty() && IsSameLetter(text.front(), ch))
            return SelectEntry(lock, list, nEntry);
    }
}

void HandleCharacter(EngineLock& lock, const Window& dialog, Window& focus, const Input& input)
{
    if (!input.bAlt && HasField(focus))
        return TypeCharacter(focus, input.ch);
    if (!input.bAlt && focus.windowClass != WindowClass::Button)
        return SelectByLetter(lock, focus, input.ch);
    if (!input.bAlt && input.ch == u' ')
        return ClickButton(lock, focus);
    HandleMnemonic(lock, dialog, input.ch);
}

void HandleClick(EngineLock& lock, Window& control, int nEntry)
{
    GiveFocus(&control);
    if (control.windowClass == WindowClass::Button)
        return ClickButton(lock, control);
    if (control.windowClass == WindowClass::ComboBox)
        DropList(control, !control.bDropped, true);
    if (nEntry >= 0)
        SelectEntry(lock, control, nEntry);
}
} // namespace

void HandleInput(EngineLock& lock, const Window& dialog, const Input& input)
{
    Window* const pClicked = CDesktop::Get().Find(input.hwndClicked);
    if (pClicked && CanTakeInput(*pClicked))
        HandleClick(lock, *pClicked, input.nEntry);
    Window* const pFocus = pClicked ? nullptr : FocusOf(dialog);
    if (pFocus && input.nKey)
        HandleKey(lock, dialog, *pFocus, input.nKey);
    else if (pFocus && input.ch)
        HandleCharacter(lock, dialog, *pFocus, input);
}
} // namespace terminal
