// A wireless profile being edited, wherever it came from.
#pragma once

#include "host/IhvElement.h"
#include "host/ProfileText.h"

#include <optional>
#include <string>

class CProfile
{
public:
    virtual ~CProfile() = default;

    // How messages and differences call it.
    const std::string& Title() const
    {
        return m_strTitle;
    }
    // The name of the profile itself.
    const CWideString& ProfileName() const
    {
        return m_strName;
    }
    const CWideString& Text() const
    {
        return m_profile.strText;
    }
    // Everything as it would be written.
    std::string Bytes() const
    {
        return EncodeProfile(m_profile);
    }

    std::optional<CWideString> VendorText(VendorPlace place) const;

    // Puts the profile back where it came from. Throws CHostError.
    virtual void Store() const = 0;

    // Throws CHostError, and leaves everything as it was, when the result would be no profile any more.
    void PutVendorText(VendorPlace place, CWideView vendorText);

protected:
    CProfile(const CProfile&) = default;
    // Throws CHostError when the text is not a wireless profile.
    CProfile(std::string strTitle, ProfileText profile);

private:
    std::string m_strTitle;
    ProfileText m_profile;
    CWideString m_strName;
};
