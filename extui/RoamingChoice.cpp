#include "extui/RoamingChoice.h"

#include "extui/ResourceText.h"
#include "profile/RoamingLevels.h"
#include "resources/resource.h"

#include <iterator>

namespace
{
constexpr std::size_t cchLevelText = 25;
} // namespace

void ShowRoamingOption(HWND hwndDialog, LONG lRoamingOption)
{
    const HWND hwndList = GetDlgItem(hwndDialog, IDC_ROAMING_OPTION);
    std::size_t nSelected = 0;
    for (std::size_t i = 0; i < std::size(roamingLevels); ++i)
    {
        const CResourceText<cchLevelText> text(roamingLevels[i].uTextId);
        // Each at its own index: the list sorts what is merely added.
        SendMessageW(hwndList, CB_INSERTSTRING, i, reinterpret_cast<LPARAM>(text.Get()));
        SendMessageW(hwndList, CB_SETITEMDATA, i, roamingLevels[i].lOption);
        if (roamingLevels[i].lOption == lRoamingOption)
            nSelected = i;
    }
    SendMessageW(hwndList, CB_SETCURSEL, nSelected, 0);
}

void ReadRoamingOption(HWND hwndDialog, LONG* plRoamingOption)
{
    const HWND hwndList = GetDlgItem(hwndDialog, IDC_ROAMING_OPTION);
    const LRESULT lSelected = SendMessageW(hwndList, CB_GETCURSEL, 0, 0);
    if (lSelected == CB_ERR)
        return;
    const LRESULT lOption = SendMessageW(hwndList, CB_GETITEMDATA, static_cast<WPARAM>(lSelected), 0);
    if (lOption != CB_ERR)
        *plRoamingOption = static_cast<LONG>(lOption);
}

void EnableRoamingOption(HWND hwndDialog)
{
    const bool bRoaming = IsDlgButtonChecked(hwndDialog, IDC_ADVANCED_ROAMING) == BST_CHECKED;
    EnableWindow(GetDlgItem(hwndDialog, IDC_ROAMING_OPTION), bRoaming);
}
