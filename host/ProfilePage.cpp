#include "host/ProfilePage.h"

#include "host/HostError.h"
#include "host/PageWords.h"
#include "host/Shown.h"
#include "host/host_resource.h"

#include <algorithm>

namespace
{
constexpr INT_PTR endedByPerson = 1; // and neither 0 nor -1, which stand for a page that did not open
constexpr UINT_PTR traceTimer = 1;
constexpr UINT traceTimerMs = 100;
constexpr std::size_t cchRow = 66; // about what a list shows

constexpr const char* securityChosen = "Security chosen: ";

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

// Long lines go on in the next row, from a blank on where they have one.
void AddLine(HWND hwndList, CWideView line)
{
    for (CWideView indent; !line.empty(); indent = OLESTR("  "))
    {
        const std::size_t nBlank = line.size() > cchRow ? line.rfind(OLESTR(' '), cchRow - 1) : CWideView::npos;
        const CWideView part = line.substr(0, nBlank == CWideView::npos ? cchRow : nBlank + 1);
        const CWideString strRow = CWideString(indent) + CWideString(part);
        SendMessageW(hwndList, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(strRow.c_str()));
        line.remove_prefix(part.size());
    }
}

void ShowLastRow(HWND hwndList)
{
    const LRESULT cRows = SendMessageW(hwndList, LB_GETCOUNT, 0, 0);
    SendMessageW(hwndList, LB_SETTOPINDEX, static_cast<WPARAM>(std::max<LRESULT>(cRows - 1, 0)), 0);
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

void ShowHelp(HWND hwndPage)
{
    MessageBoxW(hwndPage, pageHelp, OLESTR("Wireless Profile - Help"), MB_OK);
}
} // namespace

CProfilePage::CProfilePage(PageContent content, SaveWork save, TraceSource takeTrace)
    : m_content(std::move(content)), m_save(std::move(save)), m_takeTrace(std::move(takeTrace))
{
}

void CProfilePage::Run()
{
    const INT_PTR nResult = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PROFILE_PAGE), nullptr, Procedure,
                                            reinterpret_cast<LPARAM>(this));
    if (nResult != endedByPerson)
        throw CHostError("the page cannot be opened (error " + std::to_string(GetLastError()) +
                         "); it needs a terminal or a display");
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
    // On Windows the help key of a dialog above comes to its owner as well.
    else if (uMessage == WM_HELP && IsWindowEnabled(m_hwndPage))
        ShowHelp(m_hwndPage);
}

void CProfilePage::Initialise()
{
    SetTimer(m_hwndPage, traceTimer, traceTimerMs, nullptr);
    SetDlgItemTextW(m_hwndPage, IDC_PROFILE_NAME, WideShown(m_content.strProfile).c_str());
    Say("Profile: " + m_content.strProfile);
    m_authentications = m_content.security.Authentications();
    Fill(GetDlgItem(m_hwndPage, IDC_AUTHENTICATION), m_authentications, m_content.security.Authentication());
    ShowEncryptions("Security: ");
    const CWideString strConnection = m_content.pConnection ? m_content.pConnection->Name() : CWideString(OLESTR("not offered"));
    SetDlgItemTextW(m_hwndPage, IDC_CONNECTION_NAME,
                    (m_content.bHasAdapter ? strConnection : strConnection + OLESTR(" (no adapter)")).c_str());
    EnableWindow(GetDlgItem(m_hwndPage, IDC_CONNECTION_SETTINGS), m_content.pConnection && m_content.bHasAdapter);
    Say("Settings: " + SettingsWords(m_content.strConnectivity));
    SwitchList(false);
    ShowTrace();
}

void CProfilePage::Command(int nControl, unsigned uNotification)
{
    if (nControl == IDOK)
        Save();
    else if (nControl == IDCANCEL)
        EndDialog(m_hwndPage, endedByPerson);
    else if (nControl == IDC_CONNECTION_SETTINGS && uNotification == BN_CLICKED)
        OpenConnectionSettings();
    else if (nControl == IDC_AUTHENTICATION && uNotification == CBN_SELCHANGE)
        TakeAuthentication();
    else if (nControl == IDC_ENCRYPTION && uNotification == CBN_SELCHANGE)
        TakeEncryption();
    else if (nControl == IDC_SWITCH_LIST && uNotification == BN_CLICKED)
        SwitchList(!IsWindowVisible(GetDlgItem(m_hwndPage, IDC_TRACE)));
    else if (nControl == IDC_HELP_BUTTON && uNotification == BN_CLICKED)
        ShowHelp(m_hwndPage);
}

void CProfilePage::ShowEncryptions(const char* szOccasion)
{
    const HWND hwndList = GetDlgItem(m_hwndPage, IDC_ENCRYPTION);
    m_encryptions = m_content.security.Encryptions();
    m_nEncryption = m_content.security.Encryption();
    Fill(hwndList, m_encryptions, m_nEncryption);
    EnableWindow(hwndList, m_encryptions.size() > 1);
    SaySecurity(szOccasion);
    if (m_content.security.IsExtensionChosen())
        Say(OfferWords(m_encryptions, m_nEncryption));
    else
        Say(OfferWords({m_authentications.begin() + 1, m_authentications.end()}, std::nullopt));
}

void CProfilePage::SaySecurity(const char* szOccasion)
{
    Say(szOccasion + SecurityWords(m_authentications.at(m_content.security.Authentication()), m_encryptions.at(m_nEncryption)));
}

void CProfilePage::TakeAuthentication()
{
    const LRESULT lChosen = SendDlgItemMessageW(m_hwndPage, IDC_AUTHENTICATION, CB_GETCURSEL, 0, 0);
    if (lChosen == CB_ERR || static_cast<std::size_t>(lChosen) == m_content.security.Authentication())
        return;
    m_content.security.ChooseAuthentication(static_cast<std::size_t>(lChosen));
    ShowEncryptions(securityChosen);
}

void CProfilePage::TakeEncryption()
{
    const LRESULT lChosen = SendDlgItemMessageW(m_hwndPage, IDC_ENCRYPTION, CB_GETCURSEL, 0, 0);
    if (lChosen == CB_ERR)
        return;
    // Told to the extension also where a default is shown that nobody touched: what is saved is what is shown.
    m_content.security.ChooseEncryption(static_cast<std::size_t>(lChosen));
    if (static_cast<std::size_t>(lChosen) == m_nEncryption)
        return;
    m_nEncryption = static_cast<std::size_t>(lChosen);
    SaySecurity(securityChosen);
}

void CProfilePage::OpenConnectionSettings()
{
    const auto strConfigured = m_content.pConnection->ShowDialog(m_hwndPage, m_content.strConnectivity, m_content.context);
    if (strConfigured)
        m_content.strConnectivity = strConfigured;
    Say(strConfigured ? "Settings chosen: " + SettingsWords(strConfigured) : "Settings: cancelled");
}

void CProfilePage::Save()
{
    TakeAuthentication();
    TakeEncryption();
    m_save(m_content.security.VendorText(), m_content.strConnectivity);
    EndDialog(m_hwndPage, endedByPerson);
}

void CProfilePage::Say(std::string_view text)
{
    const HWND hwndList = GetDlgItem(m_hwndPage, IDC_ANSWERS);
    AddLine(hwndList, WideShown(text));
    ShowLastRow(hwndList);
}

// The two lists have one place.
void CProfilePage::SwitchList(bool bTrace)
{
    ShowWindow(GetDlgItem(m_hwndPage, IDC_TRACE), bTrace ? SW_SHOW : SW_HIDE);
    ShowWindow(GetDlgItem(m_hwndPage, IDC_ANSWERS), bTrace ? SW_HIDE : SW_SHOW);
    SetDlgItemTextW(m_hwndPage, IDC_LIST_NAME, bTrace ? OLESTR("Trace of the extensio&n") : OLESTR("Asked and a&nswered"));
    SetDlgItemTextW(m_hwndPage, IDC_SWITCH_LIST, bTrace ? OLESTR("Answe&rs") : OLESTR("T&race"));
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
        AddLine(hwndList, Spaced(lines.substr(0, lines.find('\n'))));
    m_strTrace.erase(0, nEnd + 1);
    ShowLastRow(hwndList);
}
