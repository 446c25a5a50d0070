#include "host/StoredProfile.h"

#include "host/HostError.h"

namespace
{
std::string TitleOf(const CWideString& strName)
{
    return "stored profile " + Utf8Of(strName);
}

StoredText Read(const CWlanService& service, const GUID& adapter, const CWideString& strName)
{
    if (auto stored = service.Profile(adapter, strName))
        return *stored;
    throw CHostError("the WLAN service has no profile " + Utf8Of(strName) + " on adapter " + TextOf(adapter));
}
} // namespace

CStoredProfile::CStoredProfile(const CWlanService& service, const GUID& adapter, const CWideString& strName)
    : CStoredProfile(service, adapter, Read(service, adapter, strName), TitleOf(strName))
{
}

CStoredProfile::CStoredProfile(const CWlanService& service, const GUID& adapter, const StoredText& stored,
                               const std::string& strTitle)
    : CProfile(strTitle, {stored.strText, TextEncoding::Utf16LittleEndian, true}), m_pService(&service), m_adapter(adapter),
      m_dwFlags(stored.dwFlags)
{
}

void CStoredProfile::Store() const
{
    Naming(Title(), [&] { m_pService->Store(m_adapter, {CWideString(Text()), m_dwFlags}); });
}
