// List boxes and combo boxes: both are a list of entries with a selection.
#include "platform/user32/ControlStyles.h"
#include "platform/user32/CopyText.h"
#include "platform/user32/DialogNavigation.h"
#include "platform/user32/Procedures.h"
#include "platform/user32/TextOrder.h"

#include <algorithm>

namespace platform::user32
{
namespace
{
static_assert(CB_ERR == LB_ERR);

ListEntry* EntryAt(Window& list, WPARAM wIndex)
{
    return wIndex < list.entries.size() ? &list.entries[wIndex] : nullptr;
}

LRESULT Insert(Window& list, WPARAM wIndex, LPARAM lText)
{
    if (!lText || wIndex > list.entries.size())
        return CB_ERR;
    const auto where = list.entries.begin() + static_cast<std::ptrdiff_t>(wIndex);
    list.entries.insert(where, ListEntry{reinterpret_cast<LPCWSTR>(lText), 0});
    if (list.nSelected >= static_cast<int>(wIndex))
        ++list.nSelected;
    return static_cast<LRESULT>(wIndex);
}

LRESULT Append(Window& list, bool bSorted, LPARAM lText)
{
    if (!lText)
        return CB_ERR;
    const std::u16string_view text = reinterpret_cast<LPCWSTR>(lText);
    const auto after = std::find_if(list.entries.begin(), list.entries.end(),
                                    [text](const ListEntry& entry) { return CompareText(entry.text, text) > 0; });
    const auto where = bSorted ? after : list.entries.end();
    return Insert(list, static_cast<WPARAM>(where - list.entries.begin()), lText);
}

// Shows the selection in the field of a combo box; without one the field is empty.
void ShowSelection(Window& list)
{
    if (list.windowClass != WindowClass::ComboBox)
        return;
    list.text = list.nSelected < 0 ? u"" : list.entries[static_cast<std::size_t>(list.nSelected)].text;
    list.uCaret = list.text.size();
}

LRESULT Select(Window& list, WPARAM wIndex)
{
    const bool bThere = wIndex < list.entries.size();
    list.nSelected = bThere ? static_cast<int>(wIndex) : -1;
    ShowSelection(list);
    return list.nSelected;
}

LRESULT Clear(Window& list)
{
    list.entries.clear();
    list.nTop = 0;
    Select(list, static_cast<WPARAM>(-1));
    return 0;
}

LRESULT CopyEntry(Window& list, WPARAM wIndex, LPARAM lBuffer)
{
    const ListEntry* pEntry = EntryAt(list, wIndex);
    // The message carries no size: the caller has asked for the length before.
    return pEntry ? CopyText(pEntry->text, reinterpret_cast<LPWSTR>(lBuffer), pEntry->text.size() + 1) : CB_ERR;
}

bool NotifiesSelection(const Window& list)
{
    return list.windowClass == WindowClass::ComboBox || list.Has(LBS_NOTIFY);
}
static_assert(CBN_SELCHANGE == LBN_SELCHANGE);
} // namespace

void SelectEntry(EngineLock& lock, Window& list, int nEntry)
{
    if (list.Has(WS_DISABLED) || list.entries.empty())
        return;
    const int nLast = static_cast<int>(list.entries.size()) - 1;
    const int nWanted = std::clamp(nEntry, 0, nLast);
    if (nWanted == list.nSelected)
        return;
    const HWND hwnd = list.hwnd;
    Select(list, static_cast<WPARAM>(nWanted));
    list.nTop = std::clamp(list.nTop, nWanted - VisibleEntries(list.place) + 1, nWanted);
    if (list.windowClass == WindowClass::ComboBox && !list.bDropped)
        Notify(lock, list, CBN_SELENDOK); // a choice in a closed list is final
    if (const Window* pList = CDesktop::Get().Find(hwnd); pList && NotifiesSelection(*pList))
        Notify(lock, *pList, CBN_SELCHANGE);
}

void DropList(EngineLock& lock, Window& combo, bool bDrop, bool bAccept)
{
    if (combo.Has(WS_DISABLED) || combo.bDropped == bDrop)
        return;
    const HWND hwnd = combo.hwnd;
    combo.bDropped = bDrop;
    if (bDrop)
    {
        combo.nSelectedWhenDropped = combo.nSelected;
        GiveFocus(combo);
        return Notify(lock, combo, CBN_DROPDOWN);
    }
    if (!bAccept)
        Select(combo, static_cast<WPARAM>(combo.nSelectedWhenDropped));
    Notify(lock, combo, bAccept ? CBN_SELENDOK : CBN_SELENDCANCEL);
    if (const Window* pCombo = CDesktop::Get().Find(hwnd))
        Notify(lock, *pCombo, CBN_CLOSEUP);
}

LRESULT ComboBoxMessage(EngineLock& lock, Window& combo, const Message& message)
{
    switch (message.uMessage)
    {
    case CB_ADDSTRING:
        return Append(combo, combo.Has(CBS_SORT), message.lParam);
    case CB_INSERTSTRING:
        return Insert(combo, message.wParam == static_cast<WPARAM>(-1) ? combo.entries.size() : message.wParam, message.lParam);
    case CB_RESETCONTENT:
        return Clear(combo);
    case CB_GETCOUNT:
        return static_cast<LRESULT>(combo.entries.size());
    case CB_GETCURSEL:
        return combo.nSelected;
    case CB_SETCURSEL:
        return Select(combo, message.wParam);
    case CB_GETLBTEXT:
        return CopyEntry(combo, message.wParam, message.lParam);
    case CB_GETITEMDATA:
        if (const ListEntry* pEntry = EntryAt(combo, message.wParam))
            return pEntry->lData;
        return CB_ERR;
    case CB_SETITEMDATA:
        if (ListEntry* pEntry = EntryAt(combo, message.wParam))
        {
            pEntry->lData = message.lParam;
            return TRUE;
        }
        return CB_ERR;
    case WM_SETTEXT:
        // A list without a field for text shows its selection and nothing else.
        return TakesText(combo.windowClass, combo.dwStyle) ? TextMessage(combo, message) : CB_ERR;
    case WM_CHAR:
        TypeCharacter(lock, combo, static_cast<WCHAR>(message.wParam));
        return 0;
    default:
        return TextMessage(combo, message);
    }
}

LRESULT ListBoxMessage(EngineLock&, Window& list, const Message& message)
{
    switch (message.uMessage)
    {
    case LB_ADDSTRING:
        return Append(list, list.Has(LBS_SORT), message.lParam);
    case LB_GETCOUNT:
        return static_cast<LRESULT>(list.entries.size());
    case LB_GETTEXT:
        return CopyEntry(list, message.wParam, message.lParam);
    case LB_SETTOPINDEX:
        list.nTop = static_cast<int>(std::min<WPARAM>(message.wParam, list.entries.empty() ? 0 : list.entries.size() - 1));
        return 0;
    default:
        return TextMessage(list, message);
    }
}
} // namespace platform::user32
