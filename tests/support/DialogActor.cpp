#include "tests/support/DialogActor.h"

#include "host/DialogSight.h"

#include <gtest/gtest.h>

#include <chrono>

namespace tests
{
namespace
{
constexpr UINT messageTimeoutMs = 10000;
constexpr auto patience = std::chrono::seconds(10);
constexpr auto moment = std::chrono::milliseconds(200);

// The window to be acted upon.
HWND Front()
{
    const HWND hwndBox = FindMessageBox();
    return hwndBox ? hwndBox : FindSettingsDialog();
}

// Asks until the answer is yes, the operation has ended or the time is up.
template <class Condition>
auto Await(const std::stop_token& ended, std::chrono::milliseconds limit, const Condition& condition)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    decltype(condition()) answer = {};
    while (!answer && !ended.stop_requested() && std::chrono::steady_clock::now() < end)
    {
        answer = condition();
        if (!answer)
            Sleep(1);
    }
    return answer;
}

// An answered message shows that the window has finished its initialisation and waits for its user.
CActedWindow Ready(HWND hwnd)
{
    CActedWindow::Send(hwnd, WM_NULL);
    return CActedWindow(hwnd);
}
} // namespace

LRESULT CActedWindow::Send(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutW(hwnd, uMessage, wParam, lParam, SMTO_NORMAL, messageTimeoutMs, &dwResult);
    return static_cast<LRESULT>(dwResult);
}

std::string CActedWindow::TextOf(HWND hwnd)
{
    WCHAR szText[512] = {};
    Send(hwnd, WM_GETTEXT, std::size(szText), reinterpret_cast<LPARAM>(szText));
    return Narrow(szText);
}

std::vector<std::string> CActedWindow::Items(int nId) const
{
    std::vector<std::string> items;
    for (LRESULT i = 0; i < Send(Control(nId), CB_GETCOUNT); ++i)
    {
        WCHAR szText[128] = {};
        Send(Control(nId), CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(szText));
        items.push_back(Narrow(szText));
    }
    return items;
}

void CActedWindow::Click(int nId) const
{
    constexpr LONG_PTR typeBits = 0xF;
    if ((GetWindowLongPtrW(Control(nId), GWL_STYLE) & typeBits) == BS_AUTOCHECKBOX)
        Send(Control(nId), BM_CLICK);
    else // posted: a click that opens a message box would be answered only after the box is gone
        PostMessageW(Control(nId), BM_CLICK, 0, 0);
}

CDialogActor::CDialogActor(std::function<void(CDialogActor&)> script)
    : m_thread(
          [this, run = std::move(script)](std::stop_token ended)
          {
              m_ended = std::move(ended);
              run(*this);
          })
{
}

CActedWindow CDialogActor::WaitForDialog() const
{
    const HWND hwnd = Await(m_ended, patience, FindSettingsDialog);
    EXPECT_TRUE(hwnd) << "no dialog came up";
    return Ready(hwnd);
}

CActedWindow CDialogActor::WaitForMessageBox() const
{
    const HWND hwnd = Await(m_ended, patience, FindMessageBox);
    EXPECT_TRUE(hwnd) << "no message box came up";
    return Ready(hwnd);
}

std::optional<CActedWindow> CDialogActor::WaitForAny() const
{
    const HWND hwnd = Await(m_ended, patience, Front);
    return hwnd ? std::optional(Ready(hwnd)) : std::nullopt;
}

void CDialogActor::WaitForChange(const CActedWindow& window) const
{
    Await(m_ended, moment, [&] { return Front() != window.Get(); });
}

void CDialogActor::WaitForEnd(const CActedWindow& window)
{
    // The operation may end with the window.
    EXPECT_TRUE(Await({}, patience, [&] { return !window.Exists(); })) << "the window is still up";
}
} // namespace tests
