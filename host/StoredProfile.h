// A wireless profile as the WLAN service stores it.
#pragma once

#include "host/Profile.h"
#include "host/WlanService.h"

class CStoredProfile : public CProfile
{
public:
    // Throws CHostError when the adapter has no profile of the name. The service is borrowed.
    CStoredProfile(const CWlanService& service, const GUID& adapter, const CWideString& strName);

    DWORD Flags() const
    {
        return m_dwFlags;
    }
    void Store() const override;

private:
    CStoredProfile(const CWlanService& service, const GUID& adapter, const StoredText& stored, const std::string& strTitle);

    const CWlanService* m_pService;
    GUID m_adapter;
    DWORD m_dwFlags;
};
