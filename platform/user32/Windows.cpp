// What any window is asked and told directly. Reading is done from every thread without waiting for the window's own.
#include "platform/user32/Desktop.h"
#include "platform/user32/DialogNavigation.h"
#include "platform/user32/PlannedFailure.h"
#include "platform/user32/TextOrder.h"

#include <algorithm>
#include <utility>

using namespace platform::user32;

namespace
{
// Calls read(window) under the lock; failed when there is no such window.
template <class Result, class Read>
Result WithWindow(HWND hwnd, Result failed, Read read)
{
    const auto lock = CDesktop::Get().Lock();
    Window* pWindow = CDesktop::Get().Find(hwnd);
    return pWindow ? read(*pWindow) : failed;
}

// The slots of a dialog that programs read and write by index; null for others.
LONG_PTR* DialogSlot(Window& window, int nIndex)
{
    if (!window.pDialog)
        return nullptr;
    switch (nIndex)
    {
    case DWLP_MSGRESULT:
        return &window.pDialog->lMessageResult;
    case DWLP_USER:
        return &window.pDialog->lUser;
    default:
        return nullptr;
    }
}

// One of the window's state bits set or cleared; what it was before.
bool ChangeStyle(Window& window, DWORD dwFlag, bool bSet)
{
    const bool bBefore = window.Has(dwFlag);
    window.dwStyle = bSet ? window.dwStyle | dwFlag : window.dwStyle & ~dwFlag;
    Window& dialog = CDesktop::Get().Root(window);
    // A control that no longer takes input does not keep the keyboard.
    if (&dialog != &window && !CanTakeInput(window) && dialog.pDialog->hwndFocus == window.hwnd)
        dialog.pDialog->hwndFocus = nullptr;
    // What is on the screen has changed.
    window.pQueue->Wake();
    return bBefore;
}
} // namespace

BOOL WINAPI EnableWindow(HWND hwnd, BOOL bEnable)
{
    if (FailsAsPlanned("EnableWindow", ERROR_INVALID_WINDOW_HANDLE))
        return FALSE;
    return WithWindow(hwnd, FALSE, [bEnable](Window& window) -> BOOL { return ChangeStyle(window, WS_DISABLED, !bEnable); });
}

BOOL WINAPI IsWindowEnabled(HWND hwnd)
{
    if (FailsAsPlanned("IsWindowEnabled", ERROR_INVALID_WINDOW_HANDLE))
        return FALSE;
    return WithWindow(hwnd, FALSE, [](const Window& window) -> BOOL { return !window.Has(WS_DISABLED); });
}

BOOL WINAPI ShowWindow(HWND hwnd, int nShow)
{
    if (FailsAsPlanned("ShowWindow", ERROR_INVALID_WINDOW_HANDLE))
        return FALSE;
    return WithWindow(hwnd, FALSE, [nShow](Window& window) -> BOOL { return ChangeStyle(window, WS_VISIBLE, nShow != SW_HIDE); });
}

BOOL WINAPI IsWindowVisible(HWND hwnd)
{
    if (FailsAsPlanned("IsWindowVisible", ERROR_INVALID_WINDOW_HANDLE))
        return FALSE;
    return WithWindow(hwnd, FALSE,
                      [](Window& window) -> BOOL
                      { return window.Has(WS_VISIBLE) && CDesktop::Get().Root(window).Has(WS_VISIBLE); });
}

BOOL WINAPI IsWindow(HWND hwnd)
{
    return WithWindow(hwnd, FALSE, [](const Window&) -> BOOL { return TRUE; });
}

BOOL WINAPI SetWindowTextW(HWND hwnd, LPCWSTR szText)
{
    if (FailsAsPlanned("SetWindowTextW", ERROR_INVALID_WINDOW_HANDLE))
        return FALSE;
    return SendMessageW(hwnd, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(szText)) > 0;
}

int WINAPI GetWindowTextW(HWND hwnd, LPWSTR szBuffer, int cchBuffer)
{
    const std::size_t cch = cchBuffer > 0 ? static_cast<std::size_t>(cchBuffer) : 0;
    CopyText({}, szBuffer, cch);
    if (FailsAsPlanned("GetWindowTextW", ERROR_INVALID_WINDOW_HANDLE))
        return 0;
    return WithWindow(hwnd, 0, [=](const Window& window) { return CopyText(window.text, szBuffer, cch); });
}

int WINAPI GetClassNameW(HWND hwnd, LPWSTR szBuffer, int cchBuffer)
{
    if (FailsAsPlanned("GetClassNameW", ERROR_INVALID_WINDOW_HANDLE))
        return 0;
    return WithWindow(hwnd, 0,
                      [=](const Window& window)
                      {
                          const auto row =
                              std::find_if(std::begin(classNames), std::end(classNames),
                                           [&](const ClassName& name) { return name.windowClass == window.windowClass; });
                          return CopyText(row->name, szBuffer, cchBuffer > 0 ? static_cast<std::size_t>(cchBuffer) : 0);
                      });
}

HWND WINAPI GetParent(HWND hwnd)
{
    if (FailsAsPlanned("GetParent", ERROR_INVALID_WINDOW_HANDLE))
        return nullptr;
    return WithWindow(hwnd, HWND(),
                      [](const Window& window)
                      {
                          // Only of a pop-up the owner counts as its parent.
                          return window.hwndParent || !window.Has(WS_POPUP) ? window.hwndParent : window.hwndOwner;
                      });
}

HWND WINAPI GetWindow(HWND hwnd, UINT uCommand)
{
    if (FailsAsPlanned("GetWindow", ERROR_INVALID_WINDOW_HANDLE))
        return nullptr;
    return WithWindow(hwnd, HWND(),
                      [uCommand](const Window& window) -> HWND
                      {
                          auto& desktop = CDesktop::Get();
                          if (uCommand == GW_OWNER)
                              return window.hwndOwner;
                          if (uCommand == GW_CHILD)
                              return window.children.empty() ? nullptr : window.children.front();
                          if (uCommand != GW_HWNDNEXT)
                          {
                              SetLastError(ERROR_INVALID_GW_COMMAND);
                              return nullptr;
                          }
                          const auto& siblings =
                              window.hwndParent ? desktop.Find(window.hwndParent)->children : desktop.TopLevelWindows();
                          const auto next = std::find(siblings.begin(), siblings.end(), window.hwnd) + 1;
                          return next == siblings.end() ? nullptr : *next;
                      });
}

LONG_PTR WINAPI GetWindowLongPtrW(HWND hwnd, int nIndex)
{
    if (FailsAsPlanned("GetWindowLongPtrW", ERROR_INVALID_WINDOW_HANDLE))
        return 0;
    return WithWindow(hwnd, LONG_PTR(),
                      [nIndex](Window& window) -> LONG_PTR
                      {
                          if (nIndex == GWL_STYLE)
                              return static_cast<LONG_PTR>(static_cast<LONG>(window.dwStyle));
                          if (nIndex == DWLP_DLGPROC && window.pDialog)
                              return reinterpret_cast<LONG_PTR>(window.pDialog->pProcedure);
                          if (const LONG_PTR* plSlot = DialogSlot(window, nIndex))
                              return *plSlot;
                          SetLastError(ERROR_INVALID_INDEX);
                          return 0;
                      });
}

LONG_PTR WINAPI SetWindowLongPtrW(HWND hwnd, int nIndex, LONG_PTR lValue)
{
    if (FailsAsPlanned("SetWindowLongPtrW", ERROR_INVALID_WINDOW_HANDLE))
        return 0;
    return WithWindow(hwnd, LONG_PTR(),
                      [=](Window& window) -> LONG_PTR
                      {
                          if (nIndex == GWL_STYLE)
                              return static_cast<LONG>(std::exchange(window.dwStyle, static_cast<DWORD>(lValue)));
                          if (nIndex == DWLP_DLGPROC && window.pDialog)
                              return reinterpret_cast<LONG_PTR>(
                                  std::exchange(window.pDialog->pProcedure, reinterpret_cast<DLGPROC>(lValue)));
                          if (LONG_PTR* plSlot = DialogSlot(window, nIndex))
                              return std::exchange(*plSlot, lValue);
                          SetLastError(ERROR_INVALID_INDEX);
                          return 0;
                      });
}

HWND WINAPI SetFocus(HWND hwnd)
{
    if (FailsAsPlanned("SetFocus", ERROR_INVALID_WINDOW_HANDLE))
        return nullptr;
    const HWND hwndBefore = GetFocus();
    return WithWindow(hwnd, HWND(),
                      [hwndBefore](Window& window) -> HWND
                      {
                          Window& dialog = CDesktop::Get().Root(window);
                          if (window.pQueue != CThreadQueue::Current())
                          {
                              SetLastError(ERROR_ACCESS_DENIED);
                              return nullptr;
                          }
                          if (window.Has(WS_DISABLED) || dialog.Has(WS_DISABLED))
                          {
                              SetLastError(ERROR_INVALID_PARAMETER);
                              return nullptr;
                          }
                          GiveFocus(window);
                          return hwndBefore;
                      });
}

HWND WINAPI GetFocus()
{
    const auto lock = CDesktop::Get().Lock();
    const HWND hwndActive = CThreadQueue::Current()->hwndActive;
    const Window* pActive = hwndActive ? CDesktop::Get().FindDialog(hwndActive) : nullptr;
    return pActive ? pActive->pDialog->hwndFocus : nullptr;
}

DWORD WINAPI GetWindowThreadProcessId(HWND hwnd, LPDWORD pdwProcessId)
{
    if (FailsAsPlanned("GetWindowThreadProcessId", ERROR_INVALID_WINDOW_HANDLE))
        return 0;
    return WithWindow(hwnd, DWORD(),
                      [pdwProcessId](const Window& window)
                      {
                          if (pdwProcessId)
                              *pdwProcessId = GetCurrentProcessId();
                          return window.dwThreadId;
                      });
}
