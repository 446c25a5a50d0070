#include "host/ProfilePage.h"

#include "host/HostError.h"
#include "host/Shown.h"
#include "host/host_resource.h"

#include <algorithm>

namespace
{
constexpr INT_PTR endedBySave = 1;
constexpr INT_PTR endedByCancel = 0;
constexpr UINT_PTR traceTimer = 1;
constexpr UINT traceTimerMs = 100;
constexpr std::size_t cchTraceLine = 66; // about what the list shows

CWideString WideShown(std::string_view text)
{
    return WideOf(Shown(text));
}

void Fill(HWND hwndList, const std::vector<CWideString>& entries, std::size_t nSelected)
{
    SendMessageW(hwndList, CB_RESETCONTENT, 0, 0);
    for (const CWideString& strEntry : entries)
        SendMessageW(hwndList, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(WideShown(Utf8Of(strEntry)).c_str()));
    SendMessageW(hwndList, CB_SETCURSEL, nSelected, 0);
}

// Long lines, which profile texts are, go on in the next row.
void AddTraceLine(HWND hwndList, CWideView line)
{
    for (bool bFirst = true; !line.empty(); bFirst = false)
    {
        const CWideView part = line.substr(0, cchTraceLine);
        const CWideString strRow = (bFirst ? OLESTR("") : OLESTR("  ")) + CWideString(part);
        SendMessageW(hwndList, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(strRow.c_str()));
        line.remove_prefix(part.size());
    }
}

CWideString Spaced(std::string_view line)
{
    std::string strLine(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
    std::replace(strLine.begin(), strLine.end(), '\t', ' ');
    return WideOf(Escaped(strLine));
}

void Tell(HWND hwndPage, const std::string& strReason)
{
    MessageBoxW(hwndPage, WideShown(strReason).c_str(), OLESTR("Wireless Profile"), MB_OK | MB_ICONERROR);
}
} // namespace

CProfilePage::CProfilePage(PageContent content, SaveWork save, TraceSource takeTrace)
    : m_content(std::move(content)), m_save(std::move(save)), m_takeTrace(std::move(takeTrace))
{
}

bool CProfilePage::Run()
{
    const INT_PTR nResult = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PROFILE_PAGE), nullptr, Procedure,
                                            reinterpret_cast<LPARAM>(this));
    if (nResult != endedBySave && nResult != endedByCancel)
        throw CHostError("the page cannot be opened (error " + std::to_string(GetLastError()) +
                         "); it needs a terminal or a display");
    return nResult == endedBySave;
}

INT_PTR CALLBACK CProfilePage::Procedure(HWND hwndPage, UINT uMessage, WPARAM wParam, LPARAM lParam)
{
    if (uMessage == WM_INITDIALOG)
        SetWindowLongPtrW(hwndPage, DWLP_USER, static_cast<LONG_PTR>(lParam));
    auto* pPage = reinterpret_cast<CProfilePage*>(GetWindowLongPtrW(hwndPage, DWLP_USER));
    if (!pPage)
        return FALSE;
    try
    {
        pPage->m_hwndPage = hwndPage;
        pPage->Handle(uMessage, wParam);
    }
    catch (const std::exception& error)
    {
        Tell(hwndPage, error.what());
    }
    // The first message's answer lets the dialog choose the control with the focus.
    return uMessage == WM_INITDIALOG ? TRUE : FALSE;
}

void CProfilePage::Handle(UINT uMessage, WPARAM wParam)
{
    if (uMessage == WM_INITDIALOG)
        Initialise();
    else if (uMessage == WM_COMMAND)
        Command(LOWORD(wParam), HIWORD(wParam));
    else if (uMessage == WM_TIMER)
        ShowTrace();
}

void CProfilePage::Initialise()
{
    SetTimer(m_hwndPage, traceTimer, traceTimerMs, nullptr);
    SetDlgItemTextW(m_hwndPage, IDC_PROFILE_NAME, WideShown(m_content.strProfile).c_str());
    Fill(GetDlgItem(m_hwndPage, IDC_AUTHENTICATION), m_content.security.Authentications(), m_content.security.Authentication());
    ShowEncryptions();
    const CWideString strConnection = m_content.pConnection ? m_content.pConnection->Name() : CWideString(OLESTR("not offered"));
    SetDlgItemTextW(m_hwndPage, IDC_CONNECTION_NAME,
                    (m_content.bHasAdapter ? strConnection : strConnection + OLESTR(" (no adapter)")).c_str());
    EnableWindow(GetDlgItem(m_hwndPage, IDC_CONNECTION_SETTINGS), m_content.pConnection && m_content.bHasAdapter);
    ShowTrace();
}

void CProfilePage::Command(int nControl, unsigned uNotification)
{
    if (nControl == IDOK)
        Save();
    else if (nControl == IDCANCEL)
        EndDialog(m_hwndPage, endedByCancel);
    else if (nControl == IDC_CONNECTION_SETTINGS && uNotification == BN_CLICKED)
        OpenConnectionSettings();
    else if (nControl == IDC_AUTHENTICATION && uNotification == CBN_SELCHANGE)
        TakeAuthentication();
    else if (nControl == IDC_ENCRYPTION && uNotification == CBN_SELCHANGE)
        TakeEncryption();
}

void CProfilePage::ShowEncryptions()
{
    const HWND hwndList = GetDlgItem(m_hwndPage, IDC_ENCRYPTION);
    const std::vector<CWideString> encryptions = m_content.security.Encryptions();
    Fill(hwndList, encryptions, m_content.security.Encryption());
    EnableWindow(hwndList, encryptions.size() > 1);
}

void CProfilePage::TakeAuthentication()
{
    const LRESULT lChosen = SendDlgItemMessageW(m_hwndPage, IDC_AUTHENTICATION, CB_GETCURSEL, 0, 0);
    if (lChosen == CB_ERR || static_cast<std::size_t>(lChosen) == m_content.security.Authentication())
        return;
    m_content.security.ChooseAuthentication(static_cast<std::size_t>(lChosen));
    ShowEncryptions();
}

void CProfilePage::TakeEncryption()
{
    const LRESULT lChosen = SendDlgItemMessageW(m_hwndPage, IDC_ENCRYPTION, CB_GETCURSEL, 0, 0);
    if (lChosen != CB_ERR)
        m_content.security.ChooseEncryption(static_cast<std::size_t>(lChosen));
}

void CProfilePage::OpenConnectionSettings()
{
    const auto strConfigured = m_content.pConnection->ShowDialog(m_hwndPage, m_content.strConnectivity, m_content.context);
    if (strConfigured)
        m_content.strConnectivity = strConfigured;
}

// What is saved is what is shown, also where a default is shown that nobody touched.
void CProfilePage::Save()
{
    TakeAuthentication();
    TakeEncryption();
    m_save(m_content.security.VendorText(), m_content.strConnectivity);
    EndDialog(m_hwndPage, endedBySave);
}

void CProfilePage::ShowTrace()
{
    m_strTrace += m_takeTrace();
    const HWND hwndList = GetDlgItem(m_hwndPage, IDC_TRACE);
    const std::size_t nEnd = m_strTrace.rfind('\n');
    if (nEnd == std::string::npos)
        return;
    std::string_view lines = std::string_view(m_strTrace).substr(0, nEnd + 1);
    for (; !lines.empty(); lines.remove_prefix(lines.find('\n') + 1))
        AddTraceLine(hwndList, Spaced(lines.substr(0, lines.find('\n'))));
    m_strTrace.erase(0, nEnd + 1);
    const LRESULT cRows = SendMessageW(hwndList, LB_GETCOUNT, 0, 0);
    SendMessageW(hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(std::max<LRESULT>(cRows - 1, 0)), 0);
}
