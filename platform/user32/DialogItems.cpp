// Controls by their dialog and number.
#include "platform/user32/Desktop.h"
#include "platform/user32/PlannedFailure.h"
#include "platform/user32/TextOrder.h"

using namespace platform::user32;

namespace
{
HWND FindControl(HWND hwndDialog, int nId)
{
    auto& desktop = CDesktop::Get();
    const auto lock = desktop.Lock();
    const Window* pDialog = desktop.Find(hwndDialog);
    if (!pDialog)
        return nullptr;
    const Window* pControl = desktop.FindItem(*pDialog, nId);
    if (!pControl)
        SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return pControl ? pControl->hwnd : nullptr;
}
} // namespace

HWND WINAPI GetDlgItem(HWND hwndDialog, int nId)
{
    if (FailsAsPlanned("GetDlgItem", ERROR_CONTROL_ID_NOT_FOUND))
        return nullptr;
    return FindControl(hwndDialog, nId);
}

int WINAPI GetDlgCtrlID(HWND hwnd)
{
    if (FailsAsPlanned("GetDlgCtrlID", ERROR_INVALID_WINDOW_HANDLE))
        return 0;
    const auto lock = CDesktop::Get().Lock();
    const Window* pWindow = CDesktop::Get().Find(hwnd);
    return pWindow ? pWindow->nId : 0;
}

BOOL WINAPI CheckDlgButton(HWND hwndDialog, int nId, UINT uCheck)
{
    if (FailsAsPlanned("CheckDlgButton", ERROR_CONTROL_ID_NOT_FOUND))
        return FALSE;
    const HWND hwnd = FindControl(hwndDialog, nId);
    if (!hwnd)
        return FALSE;
    SendMessageW(hwnd, BM_SETCHECK, uCheck, 0);
    return TRUE;
}

UINT WINAPI IsDlgButtonChecked(HWND hwndDialog, int nId)
{
    if (FailsAsPlanned("IsDlgButtonChecked", ERROR_CONTROL_ID_NOT_FOUND))
        return BST_UNCHECKED;
    const HWND hwnd = FindControl(hwndDialog, nId);
    return hwnd ? static_cast<UINT>(SendMessageW(hwnd, BM_GETCHECK, 0, 0)) : BST_UNCHECKED;
}

BOOL WINAPI SetDlgItemTextW(HWND hwndDialog, int nId, LPCWSTR szText)
{
    if (FailsAsPlanned("SetDlgItemTextW", ERROR_CONTROL_ID_NOT_FOUND))
        return FALSE;
    const HWND hwnd = FindControl(hwndDialog, nId);
    return hwnd && SendMessageW(hwnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(szText)) > 0;
}

UINT WINAPI GetDlgItemTextW(HWND hwndDialog, int nId, LPWSTR szBuffer, int cchBuffer)
{
    // An item that is not there reads like an empty one.
    CopyText({}, szBuffer, cchBuffer > 0 ? 1 : 0);
    if (FailsAsPlanned("GetDlgItemTextW", ERROR_CONTROL_ID_NOT_FOUND))
        return 0;
    const HWND hwnd = FindControl(hwndDialog, nId);
    if (!hwnd || cchBuffer <= 0)
        return 0;
    return static_cast<UINT>(SendMessageW(hwnd, WM_GETTEXT, static_cast<WPARAM>(cchBuffer), reinterpret_cast<LPARAM>(szBuffer)));
}

LRESULT WINAPI SendDlgItemMessageW(HWND hwndDialog, int nId, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    if (FailsAsPlanned("SendDlgItemMessageW", ERROR_CONTROL_ID_NOT_FOUND))
        return 0;
    const HWND hwnd = FindControl(hwndDialog, nId);
    return hwnd ? SendMessageW(hwnd, uMessage, wParam, lParam) : 0;
}
