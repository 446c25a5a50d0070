// Dialogs from templates in a module's resources.
#include "platform/user32/Desktop.h"
#include "platform/user32/Modal.h"
#include "platform/user32/PlannedFailure.h"

namespace platform::user32
{
namespace
{
std::span<const std::uint8_t> FindDialogResource(HINSTANCE hInstance, LPCWSTR szTemplate)
{
    const HRSRC hResource = FindResourceW(hInstance, szTemplate, RT_DIALOG);
    const HGLOBAL hData = hResource ? LoadResource(hInstance, hResource) : nullptr;
    const auto* pBytes = hData ? static_cast<const std::uint8_t*>(LockResource(hData)) : nullptr;
    return pBytes ? std::span(pBytes, SizeofResource(hInstance, hResource)) : std::span<const std::uint8_t>();
}
} // namespace
} // namespace platform::user32

using namespace platform::user32;

INT_PTR WINAPI DialogBoxParamW(HINSTANCE hInstance, LPCWSTR szTemplate, HWND hwndParent, DLGPROC pDialogProc, LPARAM lInitParam)
{
    if (FailsAsPlanned("DialogBoxParamW", ERROR_NOT_ENOUGH_MEMORY))
        return -1;
    if (hwndParent && !IsWindow(hwndParent))
    {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0; // an owner that does not exist has a failure value of its own
    }
    const auto bytes = FindDialogResource(hInstance, szTemplate);
    if (bytes.empty())
        return -1;
    DialogTemplate dialogTemplate;
    if (const DWORD dwError = ReadDialogTemplate(bytes, dialogTemplate); dwError != ERROR_SUCCESS)
    {
        SetLastError(dwError);
        return -1;
    }
    return RunDialog(dialogTemplate, hwndParent, pDialogProc, lInitParam).value_or(-1);
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
