#include "terminal/Navigation.h"

#include "platform/user32/ControlStyles.h"
#include "platform/user32/Procedures.h"
#include "terminal/Mnemonic.h"

#include <algorithm>

namespace terminal
{
namespace
{
// In template order, or backwards: those behind pFrom, then those up to and with it.
std::vector<Window*> ControlsBehind(const Window& dialog, const Window* pFrom, bool bBackward = false)
{
    std::vector<Window*> controls;
    for (HWND hwnd : dialog.children)
        controls.push_back(CDesktop::Get().Find(hwnd));
    if (bBackward)
        std::ranges::reverse(controls);
    if (const auto from = std::ranges::find(controls, pFrom); from != controls.end())
        std::rotate(controls.begin(), from + 1, controls.end());
    return controls;
}
} // namespace

std::vector<Window*> OpenDialogs(const CThreadQueue& queue)
{
    std::vector<Window*> dialogs;
    for (HWND hwnd : queue.modalWindows)
        if (Window* pDialog = CDesktop::Get().Find(hwnd); pDialog && pDialog->Has(WS_VISIBLE))
            dialogs.push_back(pDialog);
    return dialogs;
}

bool CanTakeInput(const Window& control)
{
    return control.Has(WS_VISIBLE) && !control.Has(WS_DISABLED);
}

Window* NextTabStop(const Window& dialog, const Window* pFrom, bool bBackward)
{
    for (Window* pControl : ControlsBehind(dialog, pFrom, bBackward))
        if (CanTakeInput(*pControl) && pControl->Has(WS_TABSTOP))
            return pControl;
    return nullptr;
}

Window* FocusOf(const Window& dialog)
{
    Window* pFocus = CDesktop::Get().Find(dialog.pDialog->hwndFocus);
    return pFocus && CanTakeInput(*pFocus) ? pFocus : NextTabStop(dialog, nullptr);
}

void GiveFocus(Window* pControl)
{
    if (!pControl)
        return;
    const Window& dialog = CDesktop::Get().Root(*pControl);
    if (Window* pFrom = FocusOf(dialog); pFrom && pFrom != pControl && pFrom->bDropped)
        DropList(*pFrom, false, true);
    dialog.pDialog->hwndFocus = pControl->hwnd;
}

Window* DefaultButton(const Window& dialog)
{
    Window* pFocus = FocusOf(dialog);
    if (pFocus && IsPushButton(*pFocus))
        return pFocus;
    for (Window* pControl : ControlsBehind(dialog, nullptr))
        if (IsButton(*pControl, BS_DEFPUSHBUTTON))
            return pControl;
    return nullptr;
}

Window* FindMnemonic(const Window& dialog, WCHAR ch)
{
    for (Window* pControl : ControlsBehind(dialog, FocusOf(dialog)))
    {
        const bool bLabel = pControl->windowClass == WindowClass::Static && !pControl->Has(SS_NOPREFIX);
        if (!CanTakeInput(*pControl) || (!bLabel && pControl->windowClass != WindowClass::Button))
            continue;
        const auto mnemonic = ReadMnemonic(pControl->text);
        // A label's letter is meant for the control behind it.
        if (mnemonic.nPosition >= 0 && IsSameLetter(mnemonic.text[static_cast<std::size_t>(mnemonic.nPosition)], ch))
            return bLabel ? NextTabStop(dialog, pControl) : pControl;
    }
    return nullptr;
}
} // namespace terminal
