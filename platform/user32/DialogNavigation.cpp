#include "platform/user32/DialogNavigation.h"

#include "platform/user32/ControlStyles.h"
#include "platform/user32/Mnemonic.h"
#include "platform/user32/TextOrder.h"

#include <algorithm>

namespace platform::user32
{
namespace
{
std::vector<Window*> Controls(const Window& dialog)
{
    std::vector<Window*> controls;
    for (HWND hwnd : dialog.children)
        controls.push_back(CDesktop::Get().Find(hwnd));
    return controls;
}

// The controls behind pFrom, then those up to and with it: the order in which to look for the next one.
std::vector<Window*> ControlsFrom(std::vector<Window*> controls, const Window* pFrom)
{
    const auto from = std::find(controls.begin(), controls.end(), pFrom);
    if (from != controls.end())
        std::rotate(controls.begin(), from + 1, controls.end());
    return controls;
}

Window* FirstThat(const std::vector<Window*>& controls, auto predicate)
{
    const auto found = std::find_if(controls.begin(), controls.end(), predicate);
    return found == controls.end() ? nullptr : *found;
}
} // namespace

bool CanTakeInput(const Window& control)
{
    return control.Has(WS_VISIBLE) && !control.Has(WS_DISABLED);
}

Window* NextTabStop(Window& dialog, const Window* pFrom, bool bBackward)
{
    auto controls = Controls(dialog);
    if (bBackward)
        std::reverse(controls.begin(), controls.end());
    return FirstThat(ControlsFrom(std::move(controls), pFrom),
                     [](const Window* pControl) { return CanTakeInput(*pControl) && pControl->Has(WS_TABSTOP); });
}

std::vector<Window*> GroupOf(const Window& control)
{
    auto controls = Controls(*CDesktop::Get().Find(control.hwndParent));
    const auto self = std::find(controls.begin(), controls.end(), &control);
    const auto startsGroup = [](const Window* pControl) { return pControl->Has(WS_GROUP); };
    auto first = self;
    while (first != controls.begin() && !startsGroup(*first))
        --first;
    return {first, std::find_if(self + 1, controls.end(), startsGroup)};
}

Window* NextInGroup(const Window& control, bool bBackward)
{
    auto group = GroupOf(control);
    if (bBackward)
        std::reverse(group.begin(), group.end());
    return FirstThat(ControlsFrom(std::move(group), &control),
                     [](const Window* pControl)
                     {
                         const bool bScenery =
                             pControl->windowClass == WindowClass::Static ||
                             (pControl->windowClass == WindowClass::Button && ButtonType(pControl->dwStyle) == BS_GROUPBOX);
                         return CanTakeInput(*pControl) && !bScenery;
                     });
}

void GiveFocus(Window& control)
{
    Window& dialog = CDesktop::Get().Root(control);
    dialog.pQueue->hwndActive = dialog.hwnd;
    if (&dialog != &control)
        dialog.pDialog->hwndFocus = control.hwnd;
}

Window* FocusOf(const Window& dialog)
{
    return dialog.pDialog->hwndFocus ? CDesktop::Get().Find(dialog.pDialog->hwndFocus) : nullptr;
}

Window* DefaultButton(const Window& dialog)
{
    Window* pFocus = FocusOf(dialog);
    if (pFocus && IsPushButton(pFocus->windowClass, pFocus->dwStyle))
        return pFocus;
    return FirstThat(Controls(dialog),
                     [](const Window* pControl) {
                         return pControl->windowClass == WindowClass::Button && ButtonType(pControl->dwStyle) == BS_DEFPUSHBUTTON;
                     });
}

Window* FindMnemonic(Window& dialog, WCHAR ch)
{
    const auto controls = ControlsFrom(Controls(dialog), FocusOf(dialog));
    Window* pFound = FirstThat(controls,
                               [ch](const Window* pControl)
                               {
                                   const auto mnemonic = ReadMnemonic(pControl->text);
                                   return CanTakeInput(*pControl) && HasMnemonic(pControl->windowClass, pControl->dwStyle) &&
                                          mnemonic.nPosition >= 0 &&
                                          FoldCase(mnemonic.text[static_cast<std::size_t>(mnemonic.nPosition)]) == FoldCase(ch);
                               });
    // A label's letter is meant for the control behind it.
    const bool bLabel = pFound && (pFound->windowClass == WindowClass::Static || ButtonType(pFound->dwStyle) == BS_GROUPBOX);
    return bLabel ? NextTabStop(dialog, pFound) : pFound;
}
} // namespace platform::user32
