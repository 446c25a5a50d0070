// A person at the module's dialogs: a second thread that waits for a window and works its controls by messages, as the
// platform's own automation does.
#pragma once

#include "tests/support/TestFolder.h"

#include <functional>
#include <optional>
#include <stop_token>
#include <thread>
#include <vector>

namespace tests
{
// One window, seen and worked from the actor's thread.
class CActedWindow
{
public:
    explicit CActedWindow(HWND hwnd) : m_hwnd(hwnd)
    {
    }
    HWND Get() const
    {
        return m_hwnd;
    }
    bool Exists() const
    {
        return m_hwnd && IsWindow(m_hwnd);
    }
    bool HasControl(int nId) const
    {
        return Control(nId) != nullptr;
    }
    HWND Control(int nId) const
    {
        return GetDlgItem(m_hwnd, nId);
    }
    bool IsEnabled(int nId) const
    {
        return IsWindowEnabled(Control(nId)) != FALSE;
    }
    bool IsVisible(int nId) const
    {
        return IsWindowVisible(Control(nId)) != FALSE;
    }
    // The answer of the window, or of a control; 0 when none comes within ten seconds.
    static LRESULT Send(HWND hwnd, UINT uMessage, WPARAM wParam = 0, LPARAM lParam = 0);
    // Of a window, or of a control.
    static std::string TextOf(HWND hwnd);

    std::string Title() const
    {
        return TextOf(m_hwnd);
    }
    // A control's text, state and list.
    std::string Text(int nId) const
    {
        return TextOf(Control(nId));
    }
    bool IsChecked(int nId) const
    {
        return Send(Control(nId), BM_GETCHECK) == BST_CHECKED;
    }
    std::vector<std::string> Items(int nId) const;
    int Selected(int nId) const
    {
        return static_cast<int>(Send(Control(nId), CB_GETCURSEL));
    }

    void Click(int nId) const;
    void Select(int nId, int nIndex) const
    {
        Send(Control(nId), CB_SETCURSEL, static_cast<WPARAM>(nIndex));
    }
    void Close() const
    {
        PostMessageW(m_hwnd, WM_CLOSE, 0, 0);
    }

private:
    HWND m_hwnd;
};

// Runs the script on a thread of its own; the destructor, which stands for the end of the operation that shows the
// windows, waits for the script's. The script gets the windows that it asks for in the order in which they come up; a
// window that does not come within ten seconds, or before the operation's end, fails the case and is given as one on which
// nothing happens.
class CDialogActor
{
public:
    explicit CDialogActor(std::function<void(CDialogActor&)> script);

    // Waits for the module's dialog, or a message box, to be up.
    CActedWindow WaitForDialog() const;
    CActedWindow WaitForMessageBox() const;
    // Waits for any of the two, the box before the dialog behind it; nothing when the operation ends first, which is no
    // failure here.
    std::optional<CActedWindow> WaitForAny() const;
    // Waits until another window, or none, is the one to be acted upon; for a moment only, since the last act may have had
    // no effect.
    void WaitForChange(const CActedWindow& window) const;
    // Waits until the window is gone; one that stays fails the case.
    static void WaitForEnd(const CActedWindow& window);

private:
    std::stop_token m_ended;
    std::jthread m_thread;
};
} // namespace tests
