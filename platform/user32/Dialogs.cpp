// Dialogs from templates in a module's resources.
#include "platform/user32/Desktop.h"
#include "platform/user32/Modal.h"
#include "platform/user32/PlannedFailure.h"
#include "platform/user32/Resource.h"

using namespace platform::user32;

INT_PTR WINAPI DialogBoxParamW(HINSTANCE hInstance, LPCWSTR szTemplate, HWND hwndParent, DLGPROC pDialogProc, LPARAM lInitParam)
{
    if (FailsAsPlanned("DialogBoxParamW", ERROR_NOT_ENOUGH_MEMORY))
        return -1;
    if (hwndParent && !IsWindow(hwndParent))
        return 0; // an owner that does not exist has a failure value of its own
    const auto bytes = ResourceBytes(hInstance, szTemplate, RT_DIALOG);
    if (bytes.empty())
        return -1;
    const auto dialogTemplate = ReadDialogTemplate(bytes);
    if (!dialogTemplate)
    {
        SetLastError(ERROR_RESOURCE_DATA_NOT_FOUND);
        return -1;
    }
    return RunDialog(*dialogTemplate, hwndParent, pDialogProc, lInitParam).value_or(-1);
}

BOOL WINAPI EndDialog(HWND hwndDialog, INT_PTR nResult)
{
    if (FailsAsPlanned("EndDialog", ERROR_INVALID_WINDOW_HANDLE))
        return FALSE;
    const auto lock = CDesktop::Get().Lock();
    Window* pDialog = CDesktop::Get().FindDialog(hwndDialog);
    if (!pDialog)
        return FALSE;
    EndModal(*pDialog, nResult);
    return TRUE;
}
