// Controls by their dialog and number.
#include "platform/user32/Desktop.h"
#include "platform/user32/PlannedFailure.h"

using namespace platform::user32;

namespace
{
// Null, with a last error, when the call is to fail or there is no such control.
HWND FindControl(const char* szFunction, HWND hwndDialog, int nId)
{
    if (FailsAsPlanned(szFunction, ERROR_CONTROL_ID_NOT_FOUND))
        return nullptr;
    auto& desktop = CDesktop::Get();
    const auto lock = desktop.Lock();
    const Window* pDialog = desktop.Find(hwndDialog);
    const Window* pControl = pDialog ? desktop.FindItem(*pDialog, nId) : nullptr;
    return pControl ? pControl->hwnd : nullptr;
}

LRESULT SendToControl(const char* szFunction, HWND hwndDialog, int nId, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    const HWND hwnd = FindControl(szFunction, hwndDialog, nId);
    return hwnd ? SendMessageW(hwnd, uMessage, wParam, lParam) : 0;
}
} // namespace

HWND WINAPI GetDlgItem(HWND hwndDialog, int nId)
{
    return FindControl("GetDlgItem", hwndDialog, nId);
}

BOOL WINAPI CheckDlgButton(HWND hwndDialog, int nId, UINT uCheck)
{
    const HWND hwnd = FindControl("CheckDlgButton", hwndDialog, nId);
    if (hwnd)
        SendMessageW(hwnd, BM_SETCHECK, uCheck, 0);
    return hwnd != nullptr;
}

UINT WINAPI IsDlgButtonChecked(HWND hwndDialog, int nId)
{
    return static_cast<UINT>(SendToControl("IsDlgButtonChecked", hwndDialog, nId, BM_GETCHECK, 0, 0));
}

BOOL WINAPI SetDlgItemTextW(HWND hwndDialog, int nId, LPCWSTR szText)
{
    return SendToControl("SetDlgItemTextW", hwndDialog, nId, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(szText)) > 0;
}

LRESULT WINAPI SendDlgItemMessageW(HWND hwndDialog, int nId, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    return SendToControl("SendDlgItemMessageW", hwndDialog, nId, uMessage, wParam, lParam);
}
