// Looking for windows. The handles are collected first: the callback runs without the lock and may open and close any.
#include "platform/user32/Desktop.h"
#include "platform/user32/PlannedFailure.h"

using namespace platform::user32;

namespace
{
BOOL Enumerate(const std::vector<HWND>& windows, WNDENUMPROC pEnumProc, LPARAM lParam)
{
    for (HWND hwnd : windows)
        if (IsWindow(hwnd) && !pEnumProc(hwnd, lParam))
            return FALSE;
    return TRUE;
}

std::vector<HWND> TopLevelWindows(const DWORD* pdwThreadId)
{
    auto& desktop = CDesktop::Get();
    const auto lock = desktop.Lock();
    std::vector<HWND> windows;
    for (HWND hwnd : desktop.TopLevelWindows())
        if (!pdwThreadId || desktop.Find(hwnd)->dwThreadId == *pdwThreadId)
            windows.push_back(hwnd);
    return windows;
}

// False, with the last error set, for a call that cannot be made.
bool CanEnumerate(const char* szFunction, WNDENUMPROC pEnumProc)
{
    if (FailsAsPlanned(szFunction, ERROR_NOT_ENOUGH_MEMORY))
        return false;
    if (!pEnumProc)
        SetLastError(ERROR_INVALID_PARAMETER);
    return pEnumProc != nullptr;
}
} // namespace

BOOL WINAPI EnumThreadWindows(DWORD dwThreadId, WNDENUMPROC pEnumProc, LPARAM lParam)
{
    return CanEnumerate("EnumThreadWindows", pEnumProc) && Enumerate(TopLevelWindows(&dwThreadId), pEnumProc, lParam);
}

BOOL WINAPI EnumWindows(WNDENUMPROC pEnumProc, LPARAM lParam)
{
    return CanEnumerate("EnumWindows", pEnumProc) && Enumerate(TopLevelWindows(nullptr), pEnumProc, lParam);
}

BOOL WINAPI EnumChildWindows(HWND hwndParent, WNDENUMPROC pEnumProc, LPARAM lParam)
{
    if (!CanEnumerate("EnumChildWindows", pEnumProc))
        return FALSE;
    if (!hwndParent) // the desktop's
        return Enumerate(TopLevelWindows(nullptr), pEnumProc, lParam);
    std::vector<HWND> children;
    {
        const auto lock = CDesktop::Get().Lock();
        const Window* pParent = CDesktop::Get().Find(hwndParent);
        if (!pParent)
            return FALSE;
        children = pParent->children;
    }
    return Enumerate(children, pEnumProc, lParam);
}
