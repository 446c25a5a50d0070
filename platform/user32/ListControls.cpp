// List boxes and combo boxes: both are a list of entries with a selection.
#include "platform/user32/ControlStyles.h"
#include "platform/user32/CopyText.h"
#include "platform/user32/Procedures.h"

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

// A combo box shows the selection in its field; without one the field is empty.
LRESULT Select(Window& list, WPARAM wIndex)
{
    const ListEntry* pEntry = EntryAt(list, wIndex);
    list.nSelected = pEntry ? static_cast<int>(wIndex) : -1;
    if (list.windowClass == WindowClass::ComboBox)
        list.text = pEntry ? pEntry->text : u"";
    return list.nSelected;
}

LRESULT CopyEntry(Window& list, WPARAM wIndex, LPARAM lBuffer)
{
    const ListEntry* pEntry = EntryAt(list, wIndex);
    // The message carries no size: the caller knows how long an entry can be.
    return pEntry ? CopyText(pEntry->text, reinterpret_cast<LPWSTR>(lBuffer), pEntry->text.size() + 1) : CB_ERR;
}
} // namespace

void SelectEntry(EngineLock& lock, Window& list, int nEntry)
{
    if (list.entries.empty())
        return;
    const int nWanted = std::clamp(nEntry, 0, static_cast<int>(list.entries.size()) - 1);
    if (nWanted == list.nSelected)
        return;
    Select(list, static_cast<WPARAM>(nWanted));
    list.nTop = std::clamp(list.nTop, nWanted - VisibleEntries(list) + 1, nWanted);
    // A list box tells of its selection only where its template asks for that, which none here does.
    if (list.windowClass == WindowClass::ComboBox)
        Notify(lock, list, CBN_SELCHANGE);
}

void DropList(Window& combo, bool bDrop, bool bAccept)
{
    combo.bDropped = bDrop;
    if (bDrop)
        combo.nSelectedWhenDropped = combo.nSelected;
    else if (!bAccept && combo.nSelected != combo.nSelectedWhenDropped)
        Select(combo, static_cast<WPARAM>(combo.nSelectedWhenDropped));
}

void TypeCharacter(Window& combo, WCHAR ch)
{
    if (ch >= u' ')
        combo.text += ch;
    else if (ch == backspace && !combo.text.empty())
        combo.text.pop_back();
    combo.nSelected = -1; // typed text is no entry of the list
}

LRESULT ComboBoxMessage(Window& combo, const Message& message)
{
    ListEntry* const pEntry = EntryAt(combo, message.wParam);
    switch (message.uMessage)
    {
    case CB_ADDSTRING:
        // Nothing here sorts: a sorted list takes entries at places of their own alone.
        return combo.Has(CBS_SORT) ? CB_ERR : Insert(combo, combo.entries.size(), message.lParam);
    case CB_INSERTSTRING:
        return Insert(combo, message.wParam, message.lParam);
    case CB_RESETCONTENT:
        combo.entries.clear();
        Select(combo, static_cast<WPARAM>(-1));
        return 0;
    case CB_GETCOUNT:
        return static_cast<LRESULT>(combo.entries.size());
    case CB_GETCURSEL:
        return combo.nSelected;
    case CB_SETCURSEL:
        return Select(combo, message.wParam);
    case CB_GETLBTEXT:
        return CopyEntry(combo, message.wParam, message.lParam);
    case CB_GETITEMDATA:
        return pEntry ? pEntry->lData : CB_ERR;
    case CB_SETITEMDATA:
        if (pEntry)
            pEntry->lData = message.lParam;
        return pEntry ? TRUE : CB_ERR;
    default:
        return TextMessage(combo, message);
    }
}

LRESULT ListBoxMessage(Window& list, const Message& message)
{
    switch (message.uMessage)
    {
    case LB_ADDSTRING:
        return Insert(list, list.entries.size(), message.lParam);
    case LB_GETCOUNT:
        return static_cast<LRESULT>(list.entries.size());
    case LB_GETTEXT:
        return CopyEntry(list, message.wParam, message.lParam);
    case LB_SETTOPINDEX:
        list.nTop = static_cast<int>(std::min<WPARAM>(message.wParam, list.entries.size()));
        return 0;
    default:
        return TextMessage(list, message);
    }
}
} // namespace platform::user32
