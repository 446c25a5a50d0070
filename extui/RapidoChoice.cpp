#include "extui/RapidoChoice.h"

#include "resources/resource.h"
#include "trace/IhvuiTrace.h"
#include "wlan/IhvControl.h"
#include "wlan/SelectedInterface.h"
#include "wlan/WlanAdapterList.h"

#include <optional>

namespace
{
// Built at the first call and destroyed when the module is unloaded. Not a static object of the function: the guard that a
// run-time puts around one may need memory, and ends the host when there is none. One dialog at a time needs no guard.
std::optional<CWlanAdapterList> adapterList;

const CWlanAdapterList& AdapterList()
{
    return adapterList ? *adapterList : adapterList.emplace();
}

// Leaves the maker's adapter selected when there is one.
bool SelectKorvaneInterface()
{
    const CWlanAdapterList& adapters = AdapterList();
    for (LONG i = 0; i < adapters.GetCount(); ++i)
    {
        SelectIhvInterface(adapters.GetGuidString(i));
        if (IsKorvaneInterface() == 1)
        {
            IhvuiTrace(traceLevelInfo, OLESTR("Found Korvane interface\n"));
            return true;
        }
    }
    IhvuiTrace(traceLevelError, OLESTR("Didnt find korvane interface\n"));
    return false;
}
} // namespace

void NeedAdapterList()
{
    AdapterList();
}

void ShowRapido(HWND hwndDialog, LONG lRapido)
{
    const bool bCapable = SelectKorvaneInterface() && QueryRapidoCapability() != 0;
    if (bCapable)
        IhvuiTrace(traceLevelInfo, OLESTR("Interface capable of RapidoAG\n"));
    else
        IhvuiTrace(traceLevelInfo, OLESTR("Interface is not capable of RapidoAG\n"));
    EnableWindow(GetDlgItem(hwndDialog, IDC_RAPIDO), bCapable);
    CheckDlgButton(hwndDialog, IDC_RAPIDO, bCapable && lRapido == 1 ? BST_CHECKED : BST_UNCHECKED);
}
