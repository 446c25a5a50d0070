#include "tests/support/DialogActor.h"

#include "resources/resource.h"
#include "tests/support/TestFolder.h"

#include <gtest/gtest.h>

#include <chrono>

namespace tests
{
namespace
{
constexpr UINT messageTimeoutMs = 10000;
constexpr auto patience = std::chrono::seconds(10);
constexpr auto moment = std::chrono::milliseconds(200);
constexpr int messageTextId = 0xFFFF;

struct Shown
{
    HWND hwndDialog = nullptr;
    HWND hwndMessageBox = nullptr; // the topmost

    HWND Front() const
    {
        return hwndMessageBox ? hwndMessageBox : hwndDialog;
    }
};

// A message box and the settings dialog have class and caption in common; their controls tell them apart.
BOOL CALLBACK Inspect(HWND hwnd, LPARAM lParam)
{
    auto& shown = *reinterpret_cast<Shown*>(lParam);
    DWORD dwProcess = 0;
    GetWindowThreadProcessId(hwnd, &dwProcess);
    if (dwProcess != GetCurrentProcessId() || !IsWindowVisible(hwnd))
        return TRUE;
    if (GetDlgItem(hwnd, IDC_RADIO_MEASUREMENT))
        shown.hwndDialog = hwnd;
    else if (!shown.hwndMessageBox && GetDlgItem(hwnd, messageTextId))
        shown.hwndMessageBox = hwnd;
    return TRUE;
}

// Asks until the answer is yes, the operation has ended or the time is up.
template <class Condition>
auto Await(const std::stop_token& ended, std::chrono::milliseconds limit, const Condition& condition)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    decltype(condition(Shown())) answer = {};
    while (!answer && !ended.stop_requested() && std::chrono::steady_clock::now() < end)
    {
        Shown shown;
        EnumWindows(Inspect, reinterpret_cast<LPARAM>(&shown));
        answer = condition(shown);
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

std::string TextOfWindow(HWND hwnd)
{
    WCHAR szText[512] = {};
    CActedWindow::Send(hwnd, WM_GETTEXT, std::size(szText), reinterpret_cast<LPARAM>(szText));
    return Narrow(szText);
}
} // namespace

LRESULT CActedWindow::Send(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutW(hwnd, uMessage, wParam, lParam, SMTO_NORMAL, messageTimeoutMs, &dwResult);
    return static_cast<LRESULT>(dwResult);
}

std::string CActedWindow::Title() const
{
    return TextOfWindow(m_hwnd);
}

std::string CActedWindow::Text(int nId) const
{
    return TextOfWindow(Control(nId));
}

bool CActedWindow::IsChecked(int nId) const
{
    return Send(Control(nId), BM_GETCHECK) == BST_CHECKED;
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

int CActedWindow::Selected(int nId) const
{
    return static_cast<int>(Send(Control(nId), CB_GETCURSEL));
}

void CActedWindow::Click(int nId) const
{
    constexpr LONG_PTR typeBits = 0xF;
    if ((GetWindowLongPtrW(Control(nId), GWL_STYLE) & typeBits) == BS_AUTOCHECKBOX)
        Send(Control(nId), BM_CLICK);
    else // posted: a click that opens a message box would be answered only after the box is gone
        PostMessageW(Control(nId), BM_CLICK, 0, 0);
}

void CActedWindow::Select(int nId, int nIndex) const
{
    Send(Control(nId), CB_SETCURSEL, static_cast<WPARAM>(nIndex));
}

void CActedWindow::Close() const
{
    PostMessageW(m_hwnd, WM_CLOSE, 0, 0);
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

CActedWindow CDialogActor::WaitForDialog()
{
    const HWND hwnd = Await(m_ended, patience, [](const Shown& shown) { return shown.hwndDialog; });
    EXPECT_TRUE(hwnd) << "no dialog came up";
    return Ready(hwnd);
}

CActedWindow CDialogActor::WaitForMessageBox()
{
    const HWND hwnd = Await(m_ended, patience, [](const Shown& shown) { return shown.hwndMessageBox; });
    EXPECT_TRUE(hwnd) << "no message box came up";
    return Ready(hwnd);
}

std::optional<CActedWindow> CDialogActor::WaitForAny()
{
    const HWND hwnd = Await(m_ended, patience, [](const Shown& shown) { return shown.Front(); });
    return hwnd ? std::optional(Ready(hwnd)) : std::nullopt;
}

void CDialogActor::WaitForChange(const CActedWindow& window)
{
    Await(m_ended, moment, [&](const Shown& shown) { return shown.Front() != window.Get(); });
}

void CDialogActor::WaitForEnd(const CActedWindow& window)
{
    // The operation may end with the window.
    EXPECT_TRUE(Await({}, patience, [&](const Shown&) { return !window.Exists(); })) << "the window is still up";
}
} // namespace tests
