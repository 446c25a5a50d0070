#include "host/Profile.h"

#include "host/HostError.h"
#include "host/ProfileDocument.h"

CProfile::CProfile(std::string strTitle, ProfileText profile) : m_strTitle(std::move(strTitle)), m_profile(std::move(profile))
{
    Naming(m_strTitle, [&] { m_strName = CheckProfileDocument(m_profile.strText); });
}

std::optional<CWideString> CProfile::VendorText(VendorPlace place) const
{
    return Naming(m_strTitle, [&] { return ::VendorText(m_profile.strText, place); });
}

void CProfile::PutVendorText(VendorPlace place, CWideView vendorText)
{
    Naming(m_strTitle,
           [&]
           {
               ProfileText changed = m_profile;
               changed.strText = WithVendorText(m_profile.strText, place, vendorText);
               // What counts is what the next reader of the profile gets, after the way through its encoding.
               CheckProfileDocument(DecodeProfile(EncodeProfile(changed)).strText);
               m_profile = std::move(changed);
           });
}
