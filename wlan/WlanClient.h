// A WLAN client of its own: a handle that lives as long as the object, and the last error.
#pragma once

#include <windows.h>

#include <wlanapi.h>

class CWlanClient
{
public:
    CWlanClient();
    ~CWlanClient();
    CWlanClient(const CWlanClient&) = delete;
    CWlanClient& operator=(const CWlanClient&) = delete;

    // Opens the handle and keeps the result as the last error; nothing is held after a failure.
    void Open();
    void Close();

    // Sends a request to the selected interface: to its driver when bDriver is set, to the service otherwise. Returns
    // the last error, and sends nothing when there is one already.
    DWORD IhvControl(bool bDriver, DWORD cbInput, void* pInput, DWORD cbOutput, void* pOutput, DWORD* pcbReturned);

protected:
    HANDLE m_hClient = nullptr;
    DWORD m_dwLastError = ERROR_SUCCESS;
};
