// All windows of the process, and the lock that guards them together with the threads' queues.
#pragma once

#include "platform/user32/ThreadQueue.h"
#include "platform/user32/Window.h"

#include <map>
#include <mutex>
#include <vector>

namespace platform::user32
{
// Held by whoever looks at windows or queues; never while a procedure of the program's runs.
using EngineLock = std::unique_lock<std::mutex>;

// Gives the lock up for the scope of a call into the program.
class CUnlocked
{
public:
    explicit CUnlocked(EngineLock& lock) : m_lock(lock)
    {
        m_lock.unlock();
    }
    ~CUnlocked()
    {
        m_lock.lock();
    }
    CUnlocked(const CUnlocked&) = delete;
    CUnlocked& operator=(const CUnlocked&) = delete;

private:
    EngineLock& m_lock;
};

class CDesktop
{
public:
    static CDesktop& Get();

    EngineLock Lock()
    {
        return EngineLock(m_mutex);
    }

    // The window; null with ERROR_INVALID_WINDOW_HANDLE as last error when the handle names none. The pointer is good
    // until the lock is given up.
    Window* Find(HWND hwnd);
    // Null as above, also for a window that is no dialog.
    Window* FindDialog(HWND hwnd);
    // Null with ERROR_CONTROL_ID_NOT_FOUND as last error when the dialog has no such control.
    Window* FindItem(const Window& dialog, int nId);
    // The dialog that the window is or belongs to.
    Window& Root(Window& window);

    // Takes a window of the calling thread in and gives it its handle; handles are never used again.
    Window& Add(std::unique_ptr<Window> pWindow);
    // With its children; null and unknown handles are ignored.
    void Destroy(HWND hwnd);

    // The newest first.
    const std::vector<HWND>& TopLevelWindows() const
    {
        return m_topLevel;
    }

private:
    CDesktop() = default;

    std::mutex m_mutex;
    std::map<HWND, std::unique_ptr<Window>> m_windows;
    std::vector<HWND> m_topLevel;
    UINT_PTR m_uNextHandle = 0x10020;
};
} // namespace platform::user32
