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
constexpr auto windowTimeout = std::chrono::seconds(10);
constexpr auto moment = std::chrono::milliseconds(200);
constexpr int messageTextId = 0xFFFF;

LRESULT Send(HWND hwnd, UINT uMessage, WPARAM wParam = 0, LPARAM lParam = 0)
{
    DWORD_PTR dwResult = 0;
    SendMessageTimeoutW(hwnd, uMessage, wParam, lParam, SMTO_NORMAL, messageTimeoutMs, &dwResult);
    return static_cast<LRESULT>(dwResult);
}

struct Search
{
    HWND hwndDialog = nullptr;
    HWND hwndMessageBox = nullptr;
};

// A message box and the settings dialog have class and caption in common; their controls tell them apart.
BOOL CALLBACK Inspect(HWND hwnd, LPARAM lParam)
{
    auto& search = *reinterpret_cast<Search*>(lParam);
    DWORD dwProcess = 0;
    GetWindowThreadProcessId(hwnd, &dwProcess);
    if (dwProcess != GetCurrentProcessId() || !IsWindowVisible(hwnd))
        return TRUE;
    if (GetDlgItem(hwnd, IDC_RADIO_MEASUREMENT))
        search.hwndDialog = hwnd;
    else if (!search.hwndMessageBox && GetDlgItem(hwnd, messageTextId))
        search.hwndMessageBox = hwnd; // the topmost
    return TRUE;
}

HWND FrontOf(const Search& search)
{
    return search.hwndMessageBox ? search.hwndMessageBox : search.hwndDialog;
}

// Asks until it gets a window or the operation has ended; null when none comes.
template <class Choose>
HWND WaitFor(const std::stop_token& ended, const Choose& choose)
{
    const auto end = std::chrono::steady_clock::now() + windowTimeout;
    while (!ended.stop_requested() && std::chrono::steady_clock::now() < end)
    {
        Search search;
        EnumWindows(Inspect, reinterpret_cast<LPARAM>(&search));
        if (const HWND hwndFound = choose(search))
        {
            // An answered message shows that the window has finished its initialisation and waits for its user.
            Send(hwndFound, WM_NULL);
            return hwndFound;
        }
        Sleep(1);
    }
    return nullptr;
}

std::string TextOfWindow(HWND hwnd)
{
    WCHAR szText[512] = {};
    Send(hwnd, WM_GETTEXT, std::size(szText), reinterpret_cast<LPARAM>(szText));
    return Narrow(szText);
}
} // namespace

bool CActedWindow::Exists() const
{
    return m_hwnd && IsWindow(m_hwnd);
}

std::string CActedWindow::Title() const
{
    return TextOfWindow(m_hwnd);
}

std::string CActedWindow::Text(int nId) const
{
    return TextOfWindow(GetDlgItem(m_hwnd, nId));
}

bool CActedWindow::HasControl(int nId) const
{
    return GetDlgItem(m_hwnd, nId) != nullptr;
}

bool CActedWindow::IsChecked(int nId) const
{
    return Send(GetDlgItem(m_hwnd, nId), BM_GETCHECK) == BST_CHECKED;
}

bool CActedWindow::IsEnabled(int nId) const
{
    return IsWindowEnabled(GetDlgItem(m_hwnd, nId)) != FALSE;
}

bool CActedWindow::IsVisible(int nId) const
{
    return IsWindowVisible(GetDlgItem(m_hwnd, nId)) != FALSE;
}

std::vector<std::string> CActedWindow::Items(int nId) const
{
    const HWND hwndList = GetDlgItem(m_hwnd, nId);
    std::vector<std::string> items;
    for (LRESULT i = 0; i < Send(hwndList, CB_GETCOUNT); ++i)
    {
        WCHAR szText[128] = {};
        Send(hwndList, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(szText));
        items.push_back(Narrow(szText));
    }
    return items;
}

int CActedWindow::Selected(int nId) const
{
    return static_cast<int>(Send(GetDlgItem(m_hwnd, nId), CB_GETCURSEL));
}

void CActedWindow::Click(int nId) const
{
    const HWND hwndControl = GetDlgItem(m_hwnd, nId);
    constexpr LONG_PTR typeBits = 0xF;
    if ((GetWindowLongPtrW(hwndControl, GWL_STYLE) & typeBits) == BS_AUTOCHECKBOX)
    {
        Send(hwndControl, BM_CLICK);
        return;
    }
    // Posted: a click that opens a message box would be answered only after the box is gone.
    PostMessageW(hwndControl, BM_CLICK, 0, 0);
}

void CActedWindow::Select(int nId, int nIndex) const
{
    Send(GetDlgItem(m_hwnd, nId), CB_SETCURSEL, static_cast<WPARAM>(nIndex));
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

CDialogActor::~CDialogActor() = default;

CActedWindow CDialogActor::WaitForDialog()
{
    const HWND hwnd = WaitFor(m_ended, [](const Search& search) { return search.hwndDialog; });
    EXPECT_TRUE(hwnd) << "no dialog came up";
    return CActedWindow(hwnd);
}

CActedWindow CDialogActor::WaitForMessageBox()
{
    const HWND hwnd = WaitFor(m_ended, [](const Search& search) { return search.hwndMessageBox; });
    EXPECT_TRUE(hwnd) << "no message box came up";
    return CActedWindow(hwnd);
}

std::optional<CActedWindow> CDialogActor::WaitForAny()
{
    const HWND hwnd = WaitFor(m_ended, FrontOf);
    return hwnd ? std::optional(CActedWindow(hwnd)) : std::nullopt;
}

void CDialogActor::WaitForChange(const CActedWindow& window)
{
    const auto end = std::chrono::steady_clock::now() + moment;
    while (!m_ended.stop_requested() && std::chrono::steady_clock::now() < end)
    {
        Search search;
        EnumWindows(Inspect, reinterpret_cast<LPARAM>(&search));
        if (FrontOf(search) != window.Get())
            return;
        Sleep(1);
    }
}

void CDialogActor::WaitForEnd(const CActedWindow& window)
{
    const auto end = std::chrono::steady_clock::now() + windowTimeout;
    while (window.Exists() && std::chrono::steady_clock::now() < end)
        Sleep(2);
    EXPECT_FALSE(window.Exists()) << "the window is still up";
}
} // namespace tests
