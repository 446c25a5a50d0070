#include "host/DialogSight.h"

#include "host/HostError.h"
#include "resources/resource.h"

#include <algorithm>

namespace
{
constexpr UINT messageTimeoutMs = 10000;
constexpr int messageTextId = 0xFFFF;

struct Search
{
    bool bMessageBox;
    HWND hwndFound;
};

// A message box and the settings dialog have class and caption in common; their controls tell them apart.
BOOL CALLBACK Inspect(HWND hwnd, LPARAM lParam)
{
    auto& search = *reinterpret_cast<Search*>(lParam);
    DWORD dwProcess = 0;
    GetWindowThreadProcessId(hwnd, &dwProcess);
    if (dwProcess != GetCurrentProcessId() || !IsWindowVisible(hwnd))
        return TRUE;
    const bool bIsDialog = GetDlgItem(hwnd, IDC_RADIO_MEASUREMENT) != nullptr;
    const bool bIsBox = !bIsDialog && GetDlgItem(hwnd, messageTextId) != nullptr;
    if (search.bMessageBox ? !bIsBox : !bIsDialog)
        return TRUE;
    search.hwndFound = hwnd;
    return FALSE;
}

HWND Find(bool bMessageBox)
{
    Search search = {bMessageBox, nullptr};
    EnumWindows(Inspect, reinterpret_cast<LPARAM>(&search));
    return search.hwndFound;
}

std::string TextOfWindow(HWND hwnd)
{
    WCHAR szText[512] = {};
    Send(hwnd, WM_GETTEXT, std::size(szText), reinterpret_cast<LPARAM>(szText));
    return Utf8Of(szText);
}
} // namespace

LRESULT Send(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    DWORD_PTR dwResult = 0;
    if (!SendMessageTimeoutW(hwnd, uMessage, wParam, lParam, SMTO_NORMAL, messageTimeoutMs, &dwResult))
        throw CHostError("the dialog does not answer");
    return static_cast<LRESULT>(dwResult);
}

HWND FindSettingsDialog()
{
    return Find(false);
}

HWND FindMessageBox()
{
    return Find(true);
}

std::string MessageText(HWND hwndBox)
{
    return TextOfWindow(GetDlgItem(hwndBox, messageTextId));
}

int AnswerButton(HWND hwndBox)
{
    // On some versions the only button of a box closes it by the other identifier.
    return GetDlgItem(hwndBox, IDOK) ? IDOK : IDCANCEL;
}

std::string ControlTitle(HWND hwndControl)
{
    const bool bIsList = GetDlgCtrlID(hwndControl) == IDC_ROAMING_OPTION;
    std::string strTitle = TextOfWindow(bIsList ? GetDlgItem(GetParent(hwndControl), IDC_ROAMING_OPTION_LABEL) : hwndControl);
    strTitle.erase(std::remove(strTitle.begin(), strTitle.end(), '&'), strTitle.end());
    return strTitle;
}
