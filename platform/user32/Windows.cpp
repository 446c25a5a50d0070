// What any window is asked and told directly. Reading is done from every thread without waiting for the window's own.
#include "platform/user32/Desktop.h"
#include "platform/user32/PlannedFailure.h"

#include <utility>

using namespace platform::user32;

namespace
{
// Lets work(window) answer under the lock; failed, with a last error, when the call is to fail or names no window.
template <class Result, class Work>
Result OnWindow(const char* szFunction, HWND hwnd, Result failed, Work work)
{
    if (FailsAsPlanned(szFunction, ERROR_INVALID_WINDOW_HANDLE))
        return failed;
    const auto lock = CDesktop::Get().Lock();
    Window* pWindow = CDesktop::Get().Find(hwnd);
    return pWindow ? work(*pWindow) : failed;
}

// One of the window's state bits set or cleared; what it was before.
BOOL ChangeStyle(Window& window, DWORD dwFlag, bool bSet)
{
    const bool bBefore = window.Has(dwFlag);
    window.dwStyle = bSet ? window.dwStyle | dwFlag : window.dwStyle & ~dwFlag;
    // What is on the screen has changed.
    window.pQueue->Wake();
    return bBefore;
}

// The slot that programs read and write by the index; null, with a last error, for others.
LONG_PTR* DialogSlot(Window& window, int nIndex)
{
    if (window.pDialog && nIndex == DWLP_USER)
        return &window.pDialog->lUser;
    SetLastError(ERROR_INVALID_INDEX);
    return nullptr;
}
} // namespace

BOOL WINAPI EnableWindow(HWND hwnd, BOOL bEnable)
{
    return OnWindow("EnableWindow", hwnd, FALSE,
                    [bEnable](Window& window) { return ChangeStyle(window, WS_DISABLED, !bEnable); });
}

BOOL WINAPI IsWindowEnabled(HWND hwnd)
{
    return OnWindow("IsWindowEnabled", hwnd, FALSE, [](const Window& window) -> BOOL { return !window.Has(WS_DISABLED); });
}

BOOL WINAPI ShowWindow(HWND hwnd, int nShow)
{
    return OnWindow("ShowWindow", hwnd, FALSE,
                    [nShow](Window& window) { return ChangeStyle(window, WS_VISIBLE, nShow != SW_HIDE); });
}

BOOL WINAPI IsWindowVisible(HWND hwnd)
{
    return OnWindow("IsWindowVisible", hwnd, FALSE,
                    [](Window& window) -> BOOL
                    { return window.Has(WS_VISIBLE) && CDesktop::Get().Root(window).Has(WS_VISIBLE); });
}

BOOL WINAPI IsWindow(HWND hwnd)
{
    return OnWindow("IsWindow", hwnd, FALSE, [](const Window&) -> BOOL { return TRUE; });
}

BOOL WINAPI SetWindowTextW(HWND hwnd, LPCWSTR szText)
{
    if (FailsAsPlanned("SetWindowTextW", ERROR_INVALID_WINDOW_HANDLE))
        return FALSE;
    return SendMessageW(hwnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(szText)) > 0;
}

HWND WINAPI GetParent(HWND hwnd)
{
    return OnWindow("GetParent", hwnd, HWND(),
                    [](const Window& window) { return window.hwndParent ? window.hwndParent : window.hwndOwner; });
}

HWND WINAPI GetWindow(HWND hwnd, UINT uCommand)
{
    return OnWindow("GetWindow", hwnd, HWND(),
                    [uCommand](const Window& window) -> HWND
                    {
                        if (uCommand == GW_OWNER)
                            return window.hwndOwner;
                        SetLastError(ERROR_INVALID_GW_COMMAND);
                        return nullptr;
                    });
}

int WINAPI GetDlgCtrlID(HWND hwnd)
{
    return OnWindow("GetDlgCtrlID", hwnd, 0, [](const Window& window) { return window.nId; });
}

LONG_PTR WINAPI GetWindowLongPtrW(HWND hwnd, int nIndex)
{
    return OnWindow("GetWindowLongPtrW", hwnd, LONG_PTR(),
                    [nIndex](Window& window) -> LONG_PTR
                    {
                        if (nIndex == GWL_STYLE)
                            return static_cast<LONG>(window.dwStyle);
                        const LONG_PTR* plSlot = DialogSlot(window, nIndex);
                        return plSlot ? *plSlot : 0;
                    });
}

LONG_PTR WINAPI SetWindowLongPtrW(HWND hwnd, int nIndex, LONG_PTR lValue)
{
    return OnWindow("SetWindowLongPtrW", hwnd, LONG_PTR(),
                    [=](Window& window) -> LONG_PTR
                    {
                        LONG_PTR* const plSlot = DialogSlot(window, nIndex);
                        return plSlot ? std::exchange(*plSlot, lValue) : 0;
                    });
}

DWORD WINAPI GetWindowThreadProcessId(HWND hwnd, LPDWORD pdwProcessId)
{
    return OnWindow("GetWindowThreadProcessId", hwnd, DWORD(),
                    [pdwProcessId](const Window& window)
                    {
                        if (pdwProcessId)
                            *pdwProcessId = GetCurrentProcessId();
                        return window.dwThreadId;
                    });
}

BOOL WINAPI EnumWindows(WNDENUMPROC pEnumProc, LPARAM lParam)
{
    if (FailsAsPlanned("EnumWindows", ERROR_NOT_ENOUGH_MEMORY))
        return FALSE;
    // Collected first: the callback runs without the lock and may open and close any.
    std::vector<HWND> windows;
    {
        const auto lock = CDesktop::Get().Lock();
        windows = CDesktop::Get().TopLevelWindows();
    }
    for (HWND hwnd : windows)
        if (IsWindow(hwnd) && !pEnumProc(hwnd, lParam))
            return FALSE;
    return TRUE;
}
