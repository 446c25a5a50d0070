#include "wlan/WlanClient.h"

#include "wlan/SelectedInterface.h"

namespace
{
constexpr DWORD clientVersion = 2;
}

CWlanClient::CWlanClient()
{
    Open();
}

CWlanClient::~CWlanClient()
{
    Close();
}

void CWlanClient::Open()
{
    DWORD dwNegotiatedVersion{};
    HANDLE hClient = nullptr;
    m_dwLastError = WlanOpenHandle(clientVersion, nullptr, &dwNegotiatedVersion, &hClient);
    m_hClient = m_dwLastError == ERROR_SUCCESS ? hClient : nullptr;
}

void CWlanClient::Close()
{
    if (!m_hClient)
        return;
    WlanCloseHandle(m_hClient, nullptr);
    m_hClient = nullptr;
}

DWORD CWlanClient::IhvControl(bool bDriver, DWORD cbInput, void* pInput, DWORD cbOutput, void* pOutput, DWORD* pcbReturned)
{
    if (m_dwLastError != ERROR_SUCCESS)
        return m_dwLastError;
    const auto type = bDriver ? wlan_ihv_control_type_driver : wlan_ihv_control_type_service;
    m_dwLastError = WlanIhvControl(m_hClient, &SelectedInterfaceGuid(), type, cbInput, pInput, cbOutput, pOutput, pcbReturned);
    return m_dwLastError;
}
