#include "platform/user32/Desktop.h"

#include "platform/testing/Accounts.h"

#include <algorithm>

namespace platform::user32
{
CDesktop& CDesktop::Get()
{
    // Never destroyed: a thread may still look for windows while the process ends.
    static CDesktop& desktop = *new CDesktop;
    return desktop;
}

Window* CDesktop::Find(HWND hwnd)
{
    if (const auto found = m_windows.find(hwnd); found != m_windows.end())
        return found->second.get();
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

Window* CDesktop::FindDialog(HWND hwnd)
{
    Window* pWindow = Find(hwnd);
    if (!pWindow || pWindow->pDialog)
        return pWindow;
    SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return nullptr;
}

Window* CDesktop::FindItem(const Window& dialog, int nId)
{
    for (HWND hwnd : dialog.children)
        if (Window& child = *m_windows.at(hwnd); child.nId == nId)
            return &child;
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

Window& CDesktop::Root(Window& window)
{
    return window.hwndParent ? *m_windows.at(window.hwndParent) : window;
}

Window& CDesktop::Add(std::unique_ptr<Window> pWindow)
{
    const HWND hwnd = reinterpret_cast<HWND>(m_uNextHandle);
    pWindow->hwnd = hwnd;
    pWindow->dwThreadId = GetCurrentThreadId();
    pWindow->pQueue = CThreadQueue::Current();
    auto& siblings = pWindow->hwndParent ? m_windows.at(pWindow->hwndParent)->children : m_topLevel;
    siblings.reserve(siblings.size() + 1);
    Window& window = *m_windows.emplace(hwnd, std::move(pWindow)).first->second;
    siblings.insert(window.hwndParent ? siblings.end() : siblings.begin(), hwnd);
    m_uNextHandle += 2;
    testing::ChangeAccount(testing::Account::Window, 1);
    return window;
}

void CDesktop::Destroy(HWND hwnd)
{
    const auto found = m_windows.find(hwnd);
    if (found == m_windows.end())
        return;
    const auto pWindow = std::move(found->second);
    m_windows.erase(found);
    for (HWND hwndChild : pWindow->children)
        Destroy(hwndChild);
    std::erase(m_topLevel, hwnd);
    pWindow->pQueue->Forget(hwnd);
    testing::ChangeAccount(testing::Account::Window, -1);
}
} // namespace platform::user32
