// The wireless-profile page: a dialog over the choices of one profile.
#pragma once

#include "host/SecurityChoice.h"

#include <functional>

struct PageContent
{
    std::string strProfile; // what is being edited, for the page's head
    CSecurityChoice& security;
    const CProperty* pConnection; // null where the extension offers none
    std::optional<CWideString> strConnectivity;
    CConnectionContext& context;
    bool bHasAdapter; // the connection settings are those of an adapter
};

class CProfilePage
{
public:
    using SaveWork =
        std::function<void(const std::optional<CWideString>& strSecurity, const std::optional<CWideString>& strConnectivity)>;
    using TraceSource = std::function<std::string()>;

    // save gets the vendor's texts; when it throws, the page tells the reason and stays open. takeTrace gives what the
    // module has traced since it was last asked.
    CProfilePage(PageContent content, SaveWork save, TraceSource takeTrace);

    // Runs the page until it is saved or cancelled. Throws CHostError when it cannot be opened.
    void Run();

private:
    static INT_PTR CALLBACK Procedure(HWND hwndPage, UINT uMessage, WPARAM wParam, LPARAM lParam);
    void Handle(UINT uMessage, WPARAM wParam);
    void Initialise();
    void Command(int nControl, unsigned uNotification);
    void ShowEncryptions(const char* szOccasion);
    void TakeAuthentication();
    void TakeEncryption();
    void OpenConnectionSettings();
    void Save();
    void Say(std::string_view text);
    void SaySecurity(const char* szOccasion);
    void SwitchList(bool bTrace);
    void ShowTrace();

    PageContent m_content;
    SaveWork m_save;
    TraceSource m_takeTrace;
    HWND m_hwndPage = nullptr;
    std::vector<CWideString> m_authentications; // as the lists show them
    std::vector<CWideString> m_encryptions;
    std::size_t m_nEncryption = 0;
    std::string m_strTrace; // a line that has not ended yet
};
